// Serves the watchdog while every task keeps its time.
#include "types.h"

namespace hearth {

namespace {
constexpr int kTasks = 5;
constexpr std::array<Seconds, kTasks> kLongestSilence{1, 1, 15, 30, 60};
} // namespace

class Hardware {
public:
    virtual ~Hardware() = default;
    virtual void ServeWatchdog() = 0;
    // Kept in backup memory, so that it is found after the restart.
    virtual void WriteLateTask(int task) = 0;
};

class Supervision {
public:
    explicit Supervision(Hardware& hardware)
        : FHardware(hardware) {}

    void Report(int task, Seconds uptime) { FLastReport.at(task) = uptime; }

    void Step(Seconds uptime) {
        for (int task = 0; task < kTasks; ++task) {
            if (uptime - FLastReport[task] <= kLongestSilence[task]) continue;
            if (!FLateWritten) FHardware.WriteLateTask(task);
            FLateWritten = true;
            return;
        }
        FHardware.ServeWatchdog();
    }

private:
    Hardware& FHardware;
    std::array<Seconds, kTasks> FLastReport{};
    bool FLateWritten = false;
};

} // namespace hearth
