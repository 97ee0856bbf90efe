// The command that takes a table of requirements into a project.
#pragma once

#include <string>
#include <vector>

// Texts: what stands behind "import". Gives the program's exit status. Raises UsageError
// and what Exchange::ImportCsv raises.
int RunImport(const std::vector<std::string>& texts);
