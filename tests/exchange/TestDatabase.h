// A database of a test's own, and what is looked up in it.
#pragma once

#include "backend/rules/Connection.h"
#include "backend/service/BulkWriter.h"
#include "support/TempFolder.h"

#include <string>
#include <vector>

class TestDatabase {
public:
    // With the administrator "root".
    TestDatabase() {
        Backend::BulkWriter writer(Path, Backend::BulkWriter::Hashing::QuickForTests);
        Backend::NewUser root;
        root.UserName = "root";
        root.Password = "secret";
        root.Administrator = true;
        Root = writer.AddUser(root);
        writer.Commit();
    }

    // The rows of a query, their columns joined by '|'.
    std::vector<std::string> Rows(Backend::Sql sql, int columns) const { return RowsOf(Path, sql, columns); }

    static std::vector<std::string> RowsOf(const std::string& path, Backend::Sql sql, int columns) {
        Backend::Connection connection(path);
        std::vector<std::string> lines;
        auto rows = connection.Db.Query(sql);
        while (rows.Next()) {
            std::string line;
            for (int column = 0; column < columns; ++column)
                line += (column == 0 ? "" : "|") + rows.Text(column);
            lines.push_back(line);
        }
        return lines;
    }

    TTempFolder Folder;
    const std::string Path = Folder.File("quorane.db");
    Backend::ObjectId Root = 0;
};
