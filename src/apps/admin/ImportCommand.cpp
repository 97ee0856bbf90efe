#include "apps/admin/ImportCommand.h"

#include "apps/admin/Arguments.h"
#include "apps/admin/Commands.h"
#include "backend/exchange/CsvImport.h"
#include "backend/exchange/Files.h"
#include "backend/exchange/Outline.h"

#include <chrono>
#include <cstdlib>
#include <iostream>

#include <unistd.h>

namespace {

using Exchange::Nesting;

void ReadHierarchy(const std::string& text, Exchange::TableOptions& table) {
    if (text == "none")
        table.Nesting = Nesting::None;
    else if (text == "id")
        table.Nesting = Nesting::ById;
    else if (text.starts_with("columns=")) {
        table.Nesting = Nesting::ByColumns;
        table.Columns.Headings = Exchange::SplitTrimmed(text.substr(8), ',');
        if (table.Columns.Headings.empty()) throw UsageError("--hierarchy columns= names no column");
    } else if (text.starts_with("parent=")) {
        table.Nesting = Nesting::ByParent;
        table.Columns.Parent = text.substr(7);
    } else
        throw UsageError("--hierarchy is none, id, columns=A,B,... or parent=COLUMN");
}

char ReadSeparator(const std::string& text) {
    if (text == "tab" || text == "\\t") return '\t';
    if (text.size() != 1 || text == "\"") throw UsageError("--separator is one character, or tab");
    return text[0];
}

Exchange::ImportOptions ReadOptions(const Arguments& arguments) {
    Exchange::ImportOptions options;
    auto& table = options.Table;
    table.Columns.Id = arguments.Required("--id");
    table.Columns.Name = arguments.Required("--name");
    table.Columns.Text = arguments.Required("--text");
    table.Columns.Rationale = arguments.Value("--rationale");
    table.Separator = ReadSeparator(arguments.Value("--separator", ","));
    table.Encoding = arguments.Value("--encoding");
    ReadHierarchy(arguments.Value("--hierarchy", "none"), table);
    options.ProjectName = arguments.Required("--project");
    options.TypeName = arguments.Value("--type", options.TypeName);
    options.TypeTag = arguments.Value("--tag", options.TypeTag);
    options.Update = arguments.Has("--update");
    options.DryRun = arguments.Has("--dry-run");
    const std::string onError = arguments.Value("--on-error", "stop");
    if (onError != "stop" && onError != "skip") throw UsageError("--on-error is stop or skip");
    options.SkipBad = onError == "skip";
    return options;
}

// Tells how far a long import is: at a terminal on one line that changes, else seldom.
class Progress {
public:
    void operator()(std::int64_t written, std::int64_t of) {
        const auto now = std::chrono::steady_clock::now();
        if (now - FLast < FPause) return;
        FLast = now;
        FShown = true;
        std::cerr << (FTerminal ? "\r" : "") << written << " of " << of << " requirements"
                  << (FTerminal ? "" : "\n") << std::flush;
    }
    ~Progress() {
        if (FShown && FTerminal) std::cerr << '\n';
    }

private:
    const bool FTerminal = isatty(STDERR_FILENO) != 0;
    const std::chrono::milliseconds FPause{FTerminal ? 200 : 5000};
    std::chrono::steady_clock::time_point FLast = std::chrono::steady_clock::now();
    bool FShown = false;
};

// Somebody has to stand in the history.
Backend::ObjectId FindAuthor(Backend::BulkWriter& writer, const Arguments& arguments) {
    if (arguments.Has("--user")) {
        const auto user = writer.FindUser(arguments.Value("--user"));
        if (user == 0) throw CommandError("There is no user \"" + arguments.Value("--user") + "\".");
        return user;
    }
    const char* login = std::getenv("USER");
    if (const auto user = login ? writer.FindUser(login) : 0; user != 0) return user;
    const auto administrator = writer.FindAdministrator();
    if (administrator == 0)
        throw CommandError(
            "Nobody can be named in the history: tell a user with --user, or add an administrator.");
    return administrator;
}

int PrintReport(const std::string& file, const Exchange::ImportOptions& options,
                const Exchange::ImportReport& report) {
    for (const auto& refusal : report.Refusals)
        std::cerr << file << ':' << refusal.Line << ": " << refusal.Reason << '\n';
    const bool stopped = !report.Refusals.empty() && !options.SkipBad;
    if (stopped) {
        std::cerr << "Stopped at the first record that cannot be taken; nothing was imported.\n";
        return ExitFailed;
    }
    std::cout << report.Records << " records read: " << report.Taken << " new";
    if (options.Update)
        std::cout << ", " << report.Changed << " changed, " << report.AsBefore << " as before";
    std::cout << ", " << report.Refusals.size() << " not taken";
    if (report.Headings > 0) std::cout << "; " << report.Headings << " headings made";
    std::cout << ".\n";
    if (options.Update && report.Missing > 0)
        std::cout << report.Missing << " requirements of the project are not in the table; they stay.\n";
    if (!report.Written && !options.DryRun) {
        std::cout << "Nothing was imported.\n";
        return report.Refusals.empty() ? ExitDone : ExitFailed;
    }
    if (report.NewProject) std::cout << "The project \"" << options.ProjectName << "\" is new.\n";
    if (report.NewType) std::cout << "The requirement type \"" << options.TypeName << "\" is new.\n";
    if (options.DryRun) std::cout << "Dry run: nothing was written.\n";
    return report.Refusals.empty() ? ExitDone : ExitPartly;
}

} // namespace

int RunImport(const std::vector<std::string>& texts) {
    const Arguments arguments(texts,
                              {"--project", "--id", "--name", "--text", "--rationale", "--separator",
                               "--encoding", "--hierarchy", "--database", "--on-error", "--type", "--tag",
                               "--user"},
                              {"--dry-run", "--update"}, 1);
    auto options = ReadOptions(arguments);
    const std::string bytes = Exchange::ReadFile(arguments.Word(0));
    Backend::BulkWriter writer(ExistingDatabase(arguments));
    options.AuthorId = FindAuthor(writer, arguments);
    const auto now = std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::system_clock::now().time_since_epoch());
    Exchange::ImportReport report;
    {
        Progress progress;
        report = Exchange::ImportCsv(writer, bytes, options, now.count(), std::ref(progress));
    }
    return PrintReport(arguments.Word(0), options, report);
}
