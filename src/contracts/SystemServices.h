// What the logic asks of the operating system: settings, files, processes, the
// shell, and the form in which dates are shown. The composing program sets one
// implementation; tests set their own.
//
// Texts and paths are UTF-8. Nothing here enters the message loop.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// A picture as plain pixels: four bytes each (red, green, blue, opacity), row by
// row from the top.
struct TPixels {
    int Width = 0;
    int Height = 0;
    std::vector<std::uint8_t> Bytes;

    bool Empty() const { return Bytes.empty(); }
};

class ISystemServices {
public:
    virtual ~ISystemServices();

    // The per-user value under key, for example key "Software\Vantrel\Quorane\connection"
    // and name "server". Empty when key or value is missing; reading creates nothing.
    virtual std::string ReadUserSetting(const std::string& key, const std::string& name) = 0;

    // Creates what is missing. Raises Exception when the value cannot be stored; the
    // values stored before are then unharmed.
    virtual void WriteUserSetting(const std::string& key, const std::string& name,
                                  const std::string& value) = 0;

    // The same for all users of the machine, for reading only.
    virtual std::string ReadMachineSetting(const std::string& key, const std::string& name) = 0;

    // The path of the type library with that identity, in braces as
    // "{10430000-72AE-11D5-B316-0800309CC2CE}". Empty when none is registered.
    virtual std::string TypeLibraryPath(const std::string& libraryId) = 0;

    // The version in the file's version record as "a.b.c.d"; empty for a file without
    // a record, an empty path and a missing file.
    virtual std::string FileVersion(const std::string& path) = 0;

    // A path in the system's temporary directory that no file has and that no other
    // call has given, in this process or another. Only this user can read there.
    virtual std::string UniqueTempFileName() = 0;

    virtual bool FileExists(const std::string& path) = 0;

    // Gives false when the file was not there or could not be deleted.
    virtual bool DeleteFile(const std::string& path) = 0;

    // Starts the program without arguments, detached, in workingDirectory, and does
    // not wait for it. Raises Exception when it cannot be started.
    virtual void StartProcess(const std::string& path, const std::string& workingDirectory) = 0;

    // The shell's verb "open" for a file path or an address. A failure shows nowhere.
    virtual void ShellOpen(const std::string& target) = 0;

    // The icon that the desktop shows for such a file, of size by size pixels; the
    // one for unknown files when there is none better. Never empty.
    virtual TPixels FileIcon(const std::string& path, int size) = 0;

    // An OLE date (days since 1899-12-30) in the user's short format, date only.
    virtual std::string ShortDateText(double date) = 0;

    // The same with the time of day.
    virtual std::string DateTimeText(double date) = 0;

    // The present moment, local time, as an OLE date.
    virtual double Now() = 0;
};

// Set once, by whoever composes the program. Raises Exception when nothing is set.
ISystemServices& SystemServices();

// Empty takes the implementation away; it must outlive its use.
void SetSystemServices(ISystemServices* services);
