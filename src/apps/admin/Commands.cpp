#include "apps/admin/Commands.h"

#include "apps/admin/Arguments.h"
#include "apps/admin/Password.h"
#include "backend/service/BulkWriter.h"
#include "backend/service/DatabaseLocation.h"

#include <filesystem>
#include <iostream>

using namespace Backend;

namespace {

std::string DatabasePath(const Arguments& arguments) {
    return arguments.Value("--database", DefaultDatabasePath());
}

} // namespace

std::string ExistingDatabase(const Arguments& arguments) {
    const auto path = DatabasePath(arguments);
    if (!std::filesystem::exists(path))
        throw CommandError("There is no database " + path + "; \"quorane-admin create\" makes one.");
    return path;
}

int RunCreate(const std::vector<std::string>& texts) {
    const Arguments arguments(texts, {"--database"}, {}, 0);
    const auto path = DatabasePath(arguments);
    if (std::filesystem::exists(path)) throw CommandError("There is a file " + path + " already.");
    std::error_code error;
    if (const auto folder = std::filesystem::path(path).parent_path(); !folder.empty())
        std::filesystem::create_directories(folder, error);
    if (error) throw CommandError("The folder of " + path + " cannot be made: " + error.message() + '.');
    BulkWriter(path).Commit();
    std::cout << path << " is made. Add an administrator with \"quorane-admin add-user NAME --admin\".\n";
    return ExitDone;
}

int RunAddUser(const std::vector<std::string>& texts) {
    const Arguments arguments(texts, {"--database", "--display-name"}, {"--admin", "--must-change-password"},
                              1);
    const auto path = ExistingDatabase(arguments);
    NewUser user;
    user.UserName = arguments.Word(0);
    user.Name = arguments.Value("--display-name", user.UserName);
    user.Administrator = arguments.Has("--admin");
    user.MustChangePassword = arguments.Has("--must-change-password");
    // Asked before the database is opened, because nobody else can write meanwhile.
    user.Password = AskPassword(user.UserName);
    BulkWriter writer(path);
    writer.AddUser(user);
    writer.Commit();
    std::cout << "The user " << user.UserName << " is added.\n";
    return ExitDone;
}

int RunGrant(const std::vector<std::string>& texts) {
    const Arguments arguments(texts, {"--database"}, {}, 3);
    static const std::pair<const char*, Role> roles[] = {{"reader", Role::Reader},
                                                         {"discusser", Role::Discusser},
                                                         {"editor", Role::Editor},
                                                         {"manager", Role::Manager}};
    const auto* role = std::find_if(std::begin(roles), std::end(roles),
                                    [&](const auto& row) { return arguments.Word(2) == row.first; });
    if (role == std::end(roles)) throw UsageError("a role is reader, discusser, editor or manager");

    BulkWriter writer(ExistingDatabase(arguments));
    const auto project = writer.FindProject(arguments.Word(0));
    if (project == 0) throw CommandError("There is no project \"" + arguments.Word(0) + "\".");
    auto subject = writer.FindUser(arguments.Word(1));
    if (subject == 0) subject = writer.FindGroup(arguments.Word(1));
    if (subject == 0) throw CommandError("There is no user or group \"" + arguments.Word(1) + "\".");
    writer.Grant(project, subject, role->second);
    writer.Commit();
    std::cout << arguments.Word(1) << " is " << role->first << " in " << arguments.Word(0) << ".\n";
    return ExitDone;
}
