// Administers a requirements database from the command line.
#include "apps/admin/Arguments.h"
#include "apps/admin/Commands.h"
#include "apps/admin/ImportCommand.h"

#include <iostream>
#include <map>

namespace {

constexpr const char* Usage =
    R"(Usage: quorane-admin create [--database FILE]
       quorane-admin add-user NAME [--display-name TEXT] [--admin]
                     [--must-change-password] [--database FILE]
       quorane-admin grant PROJECT USER-OR-GROUP reader|discusser|editor|manager
                     [--database FILE]
       quorane-admin import FILE --project NAME --id COLUMN --name COLUMN --text COLUMN
                     [--rationale COLUMN] [--separator C] [--encoding NAME]
                     [--hierarchy none|id|columns=A,B,...|parent=COLUMN]
                     [--type NAME] [--tag TAG] [--user NAME]
                     [--update] [--on-error stop|skip] [--dry-run] [--database FILE]

create     makes an empty database
add-user   asks for the password without showing it, or reads it from standard input
grant      lets a user or a group take part in a project; an administrator has every right
import     takes a table of separated values into a project, all of it or nothing

  --database FILE   instead of the embedded server's: quorane.db in $QUORANE_DATA_DIR, or
                    quorane/quorane.db in $XDG_DATA_HOME or ~/.local/share
  --id, --name, --text, --rationale COLUMN
                    the columns by their names in the first line; every other column
                    becomes a text attribute on a custom tab
  --separator C     the character between cells, or tab; a comma without it
  --encoding NAME   as iconv names it; without it, what a byte-order mark tells, or UTF-8
  --hierarchy       none: all on one level
                    id: A.1 goes under A
                    columns=A,B: under headings made of these columns
                    parent=COLUMN: under the record whose id stands in that column
  --type, --tag     the requirement type, and the tag of one that is made
  --user NAME       who is named in the history; without it, the user of your system's
                    logon name, or else the first administrator
  --update          a record whose id is in the project makes a new version of that requirement
                    when it differs; without it, such a record cannot be taken
  --on-error        stop: the first record that cannot be taken ends the import (default)
                    skip: such records are told and left out
  --dry-run         check and report, write nothing

Exit status: 0 done, 1 failed and nothing was changed, 2 wrong usage, 3 imported without the
records that were told.
)";

int Run(const std::vector<std::string>& texts) {
    static const std::map<std::string, int (*)(const std::vector<std::string>&)> commands = {
        {"create", RunCreate}, {"add-user", RunAddUser}, {"grant", RunGrant}, {"import", RunImport}};
    if (texts.empty()) throw UsageError("a command is missing");
    if (texts[0] == "--help" || texts[0] == "help") {
        std::cout << Usage;
        return ExitDone;
    }
    const auto command = commands.find(texts[0]);
    if (command == commands.end()) throw UsageError("there is no command " + texts[0]);
    return command->second({texts.begin() + 1, texts.end()});
}

} // namespace

int main(int count, char** texts) {
    try {
        return Run({texts + 1, texts + count});
    } catch (const UsageError& error) {
        std::cerr << "quorane-admin: " << error.what() << ".\n\"quorane-admin --help\" tells the usage.\n";
        return ExitUsage;
    } catch (const std::exception& error) {
        std::cerr << "quorane-admin: " << error.what() << '\n';
        return ExitFailed;
    }
}
