#include "Processes.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct TProcess {
    int Parent = 0;
    double Ticks = 0;
};

// The fields behind the name, which may hold blanks: state, parent, and so on.
TProcess ReadStat(const std::filesystem::path& folder) {
    std::ifstream file(folder / "stat");
    std::string line;
    std::getline(file, line);
    std::istringstream fields(line.substr(std::min(line.size(), line.rfind(')') + 1)));
    std::string state, skipped;
    TProcess process;
    double user = 0, system = 0;
    fields >> state >> process.Parent;
    for (int field = 0; field < 9; ++field)
        fields >> skipped;
    fields >> user >> system;
    process.Ticks = user + system;
    return process;
}

std::map<int, TProcess> Family() {
    std::map<int, TProcess> all;
    for (const auto& entry : std::filesystem::directory_iterator("/proc"))
        if (const std::string name = entry.path().filename();
            name.find_first_not_of("0123456789") == name.npos)
            all[std::stoi(name)] = ReadStat(entry.path());
    std::map<int, TProcess> family;
    for (const auto& [id, process] : all)
        for (int ancestor = id; ancestor > 1; ancestor = all[ancestor].Parent)
            if (ancestor == getpid()) {
                family[id] = process;
                break;
            }
    return family;
}

} // namespace

double MemoryOfAll() {
    double kilobytes = 0;
    for (const auto& [id, process] : Family()) {
        std::ifstream file("/proc/" + std::to_string(id) + "/smaps_rollup");
        for (std::string word; file >> word;)
            if (double value = 0; word == "Pss:" && file >> value) kilobytes += value;
    }
    if (kilobytes == 0) throw std::runtime_error("smaps_rollup cannot be read");
    return kilobytes / 1024;
}

double ProcessorTimeOfAll() {
    double ticks = 0;
    for (const auto& [id, process] : Family())
        ticks += process.Ticks;
    return ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
}
