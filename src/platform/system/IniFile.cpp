#include "platform/system/IniFile.h"

#include "contracts/Exceptions.h"

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QSaveFile>

#include <string_view>

namespace {

constexpr int LockTimeoutMs = 2000;

// Backslash escapes keep every value on its line and its outer blanks visible.
std::string Escape(const std::string& value) {
    std::string out;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const bool outer = i == 0 || i + 1 == value.size();
        switch (const char c = value[i]) {
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case ' ':
            out += outer ? "\\s" : " ";
            break;
        default:
            out += c;
        }
    }
    return out;
}

std::string Unescape(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        switch (const char c = text[++i]) {
        case 'n':
            out += '\n';
            break;
        case 'r':
            out += '\r';
            break;
        case 's':
            out += ' ';
            break;
        default:
            out += c;
        }
    }
    return out;
}

std::string_view Trim(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

void ParseLine(std::string_view line, std::string& section, TIniFile::TSections& sections) {
    line = Trim(line);
    if (line.empty() || line.front() == ';') return;
    if (line.front() == '[' && line.back() == ']') {
        section = line.substr(1, line.size() - 2);
        return;
    }
    const auto equals = line.find('=');
    if (equals == std::string_view::npos) return;
    sections[section][std::string(Trim(line.substr(0, equals)))] = Unescape(Trim(line.substr(equals + 1)));
}

QString QtPath(const std::filesystem::path& path) {
    return QFile::decodeName(path.c_str());
}

QByteArray Format(const TIniFile::TSections& sections) {
    QByteArray text;
    for (const auto& [section, values] : sections) {
        text.append('[').append(QByteArray::fromStdString(section)).append("]\n");
        for (const auto& [name, value] : values)
            text.append(QByteArray::fromStdString(name + "=" + Escape(value) + "\n"));
    }
    return text;
}

} // namespace

TIniFile::TIniFile(std::filesystem::path path)
    : FPath(std::move(path)) {}

TIniFile::TSections TIniFile::ReadAll() const {
    TSections sections;
    QFile file(QtPath(FPath));
    if (!file.open(QIODevice::ReadOnly)) return sections;
    const QByteArray text = file.readAll();
    std::string section;
    for (std::string_view rest(text.constData(), static_cast<std::size_t>(text.size())); !rest.empty();) {
        const auto end = rest.find('\n');
        ParseLine(rest.substr(0, end), section, sections);
        rest = end == std::string_view::npos ? std::string_view{} : rest.substr(end + 1);
    }
    return sections;
}

std::optional<std::string> TIniFile::Read(const std::string& section, const std::string& name) const {
    const TSections sections = ReadAll();
    const auto values = sections.find(section);
    if (values == sections.end()) return std::nullopt;
    const auto value = values->second.find(name);
    if (value == values->second.end()) return std::nullopt;
    return value->second;
}

void TIniFile::Write(const TSections& changes) const {
    QDir().mkpath(QtPath(FPath.parent_path()));
    QLockFile lock(QtPath(FPath) + QStringLiteral(".lock"));
    if (!lock.tryLock(LockTimeoutMs))
        throw Exception("The settings file " + FPath.string() + " cannot be locked for writing.");

    TSections sections = ReadAll();
    for (const auto& [section, values] : changes)
        for (const auto& [name, value] : values)
            sections[section][name] = value;

    QSaveFile file(QtPath(FPath));
    const QByteArray text = Format(sections);
    // Without the flush a commit does not see that the last bytes found no room.
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush() ||
        !file.commit())
        throw Exception("The settings file " + FPath.string() +
                        " cannot be written: " + file.errorString().toStdString() + ".");
}
