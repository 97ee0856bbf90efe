// What hostile markup reaches for: a server that listens on this machine and a folder
// that is none of the document's. Sees whether either was touched.
#pragma once

#include "support/HostileMarkup.h"
#include "support/TempFolder.h"

#include <QTcpServer>

#include <array>
#include <filesystem>

#include <sys/inotify.h>
#include <unistd.h>

class THostileOutside {
public:
    THostileOutside() {
        std::filesystem::create_directory(Folder());
        WriteFile(FFolder.File("outside/p.png"), "picture");
        WriteFile(FFolder.File("outside/style.css"), "p{color:red}");
        WriteFile(FFolder.File("outside/page.html"), "<p>page</p>");
        WriteFile(FFolder.File("outside/a.js"), std::string(HostileScript));
        if (!Server.listen(QHostAddress::LocalHost)) throw std::runtime_error("cannot listen");
        inotify_add_watch(FOpenings, Folder().c_str(), IN_OPEN);
    }
    ~THostileOutside() { ::close(FOpenings); }
    THostileOutside(const THostileOutside&) = delete;
    THostileOutside& operator=(const THostileOutside&) = delete;

    std::string Filled(const THostileRow& row) const {
        return HostileText(row, "http://127.0.0.1:" + std::to_string(Server.serverPort()), Folder());
    }
    // Whether a file was opened since the last call.
    bool FileOpened() {
        std::array<char, 4096> events{};
        return ::read(FOpenings, events.data(), events.size()) > 0;
    }

    QTcpServer Server;

private:
    std::string Folder() const { return FFolder.File("outside"); }

    TTempFolder FFolder;
    const int FOpenings = inotify_init1(IN_NONBLOCK);
};
