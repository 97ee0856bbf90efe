#include "backend/exchange/SampleDatabase.h"

#include "backend/exchange/SampleProject.h"

#include <algorithm>

namespace Exchange {

using namespace Backend;

namespace {

void WritePerson(BulkWriter& writer, SampleNames& names, const OutlineEntry& entry) {
    const std::string kind = entry.Text("kind");
    if (kind == "user") {
        NewUser user;
        user.UserName = entry.Text("login");
        user.Name = entry.Title;
        user.Password = entry.Text("password");
        user.Disabled = entry.Flag("disabled");
        user.MustChangePassword = entry.Flag("must change password");
        user.Administrator = entry.Flag("admin");
        names.Users[user.UserName] = writer.AddUser(user);
    } else if (kind == "group") {
        std::vector<ObjectId> members;
        for (const auto& member : entry.List("members", ','))
            members.push_back(Find(names.Users, member, entry));
        names.Groups[entry.Title] = writer.AddGroup(entry.Title, members);
    } else if (kind == "integration") {
        Integration integration;
        integration.Name = entry.Title;
        integration.LibraryName = entry.Text("library");
        writer.AddIntegration(integration);
    } else
        throw entry.Error("the kind is none of user, group and integration");
}

std::vector<std::filesystem::path> ProjectFolders(const std::filesystem::path& samples) {
    std::vector<std::filesystem::path> folders;
    for (const auto& entry : std::filesystem::directory_iterator(samples))
        if (std::filesystem::exists(entry.path() / "project.txt")) folders.push_back(entry.path());
    std::sort(folders.begin(), folders.end());
    return folders;
}

std::filesystem::path AbsolutePath(const std::filesystem::path& path) {
    return std::filesystem::absolute(path).lexically_normal();
}

} // namespace

void BuildSampleDatabase(const SampleOptions& options) {
    const auto samples = AbsolutePath(options.SamplesFolder);
    const auto source =
        options.SourceFolder.empty() ? samples / "source" : AbsolutePath(options.SourceFolder);
    const auto people = ReadOutline((samples / "people.txt").string());
    BulkWriter writer(options.DatabasePath, options.Hashing);
    SampleNames names;
    for (const auto& entry : people)
        WritePerson(writer, names, entry);
    std::deque<SampleProject> projects;
    for (const auto& folder : ProjectFolders(samples))
        projects.emplace_back(writer, names, folder, source).Write();
    for (auto& project : projects)
        project.WriteTraces();
    writer.Commit();
}

} // namespace Exchange
