// Makes new databases: the sample projects, or a big project to measure with.
#include "backend/exchange/GeneratedProject.h"
#include "backend/exchange/SampleDatabase.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>

namespace {

constexpr const char* Usage =
    R"(Usage: quorane-seed --database FILE [--samples DIR] [--source DIR]
       quorane-seed --database FILE --generate N [--children-of-one M]

Makes a new database. FILE must not be there yet.

  --samples DIR         write the sample projects whose texts stand in DIR; without it,
                        those beside this program or in $QUORANE_SAMPLES
  --source DIR          where the sample source files lie that requirements are traced to;
                        without it, the folder "source" of the sample texts
  --generate N          write one project of N requirements instead; its only user is
                        "admin" with the password "admin"
  --children-of-one M   of these, let M be children of one requirement

Exit status: 0 done, 1 failed (no file is left behind), 2 wrong usage.
)";

struct Arguments {
    std::string Database, Samples, Source;
    std::optional<std::int64_t> Generate;
    std::int64_t ChildrenOfOne = 0;
};

std::optional<std::int64_t> Number(const char* text) {
    std::int64_t number = 0;
    const auto result = std::from_chars(text, text + std::strlen(text), number);
    if (result.ec != std::errc() || *result.ptr != '\0' || number < 0) return std::nullopt;
    return number;
}

// Empty when the usage is wrong.
std::optional<Arguments> Parse(int count, char** texts) {
    Arguments arguments;
    for (int i = 1; i < count; i += 2) {
        const std::string option = texts[i];
        if (i + 1 == count) return std::nullopt;
        const auto number = Number(texts[i + 1]);
        if (option == "--database")
            arguments.Database = texts[i + 1];
        else if (option == "--samples")
            arguments.Samples = texts[i + 1];
        else if (option == "--source")
            arguments.Source = texts[i + 1];
        else if (option == "--generate" && number)
            arguments.Generate = number;
        else if (option == "--children-of-one" && number)
            arguments.ChildrenOfOne = *number;
        else
            return std::nullopt;
    }
    if (arguments.Database.empty() || arguments.ChildrenOfOne > arguments.Generate.value_or(0))
        return std::nullopt;
    return arguments;
}

// Beside the program once installed, in the repository when it runs from its build folder.
std::filesystem::path FindSamples(const char* program) {
    if (const char* folder = std::getenv("QUORANE_SAMPLES"); folder && *folder) return folder;
    std::error_code error;
    auto self = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) self = std::filesystem::absolute(program);
    for (auto folder = self.parent_path(); folder != folder.root_path(); folder = folder.parent_path())
        for (const char* name : {"samples", "share/quorane/samples"})
            if (std::filesystem::exists(folder / name / "people.txt")) return folder / name;
    throw std::runtime_error(
        "The sample texts are not beside the program; give their folder with --samples.");
}

void Build(const std::string& path, const Arguments& arguments, const char* program) {
    if (arguments.Generate) {
        Exchange::BuildGeneratedDatabase(path, {*arguments.Generate, arguments.ChildrenOfOne});
        return;
    }
    const auto samples =
        arguments.Samples.empty() ? FindSamples(program) : std::filesystem::path(arguments.Samples);
    Exchange::BuildSampleDatabase({path, samples.string(), arguments.Source});
}

} // namespace

int main(int count, char** texts) {
    const auto arguments = Parse(count, texts);
    if (!arguments) {
        const bool help = count == 2 && std::string_view(texts[1]) == "--help";
        std::fputs(Usage, help ? stdout : stderr);
        return help ? 0 : 2;
    }
    // Built beside its place and moved there at the end, so that a program that waits for
    // the file never finds half of it.
    const std::filesystem::path path = arguments->Database;
    auto begun = path;
    begun += ".new";
    try {
        if (std::filesystem::exists(path))
            throw std::runtime_error("There is a file " + path.string() + " already.");
        if (path.has_parent_path()) std::filesystem::create_directories(path.parent_path());
        std::filesystem::remove(begun);
        Build(begun.string(), *arguments, texts[0]);
        std::filesystem::rename(begun, path);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quorane-seed: %s\n", error.what());
        std::error_code ignored;
        for (const char* suffix : {"", "-wal", "-shm"})
            std::filesystem::remove(begun.string() + suffix, ignored);
        return 1;
    }
}
