#include "support/MachineTicks.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/ProcPidStat.h"
#include "platform/linux/ProcStat.h"
#include "sampling/TimePoint.h"

#include <chrono>
#include <cmath>

MachineTickRecorder::MachineTickRecorder(int watchedPID)
    : m_watchedPID(watchedPID), m_thread([this] {
          const QByteArray processStat = "/proc/" + QByteArray::number(m_watchedPID) + "/stat";
          while (!m_stop.load()) {
              const FileReadResult stat = readKernelFile(QByteArrayLiteral("/proc/stat"));
              std::optional<unsigned long long> processTicks;
              if (m_watchedPID > 0) {
                  const FileReadResult text = readKernelFile(processStat);
                  if (const auto parsed =
                          text.bytes ? parseProcPidStat(asView(*text.bytes)) : std::nullopt)
                      processTicks = parsed->userTicks + parsed->systemTicks;
              }
              const double now = TimePoint::now().secondsSince1970;
              if (stat.bytes) {
                  if (const auto ticks = parseProcStatCPUTicks(asView(*stat.bytes))) {
                      std::lock_guard lock(m_mutex);
                      m_readings.push_back({now, *ticks, processTicks});
                  }
              }
              std::this_thread::sleep_for(std::chrono::milliseconds(5));
          }
      })
{
}

MachineTickRecorder::~MachineTickRecorder()
{
    m_stop = true;
    m_thread.join();
}

const MachineTickRecorder::Reading *MachineTickRecorder::nearest(double wallClock) const
{
    const Reading *best = nullptr;
    double bestDistance = 0.05; // a reading further off than 50 ms is no match
    for (const Reading &reading : m_readings) {
        const double distance = std::abs(reading.wallClock - wallClock);
        if (distance <= bestDistance) {
            bestDistance = distance;
            best = &reading;
        }
    }
    return best;
}

std::optional<double> MachineTickRecorder::usageBetween(double fromSeconds, double toSeconds) const
{
    std::lock_guard lock(m_mutex);
    const Reading *from = nearest(fromSeconds);
    const Reading *to = nearest(toSeconds);
    if (!from || !to)
        return std::nullopt;
    return cpuUsageBetween(from->ticks, to->ticks);
}

std::optional<double> MachineTickRecorder::processPercentBetween(double fromSeconds,
                                                                 double toSeconds) const
{
    std::lock_guard lock(m_mutex);
    const Reading *from = nearest(fromSeconds);
    const Reading *to = nearest(toSeconds);
    if (!from || !to || !from->processTicks || !to->processTicks ||
        *to->processTicks < *from->processTicks || !(to->wallClock > from->wallClock))
        return std::nullopt;
    const double seconds = static_cast<double>(*to->processTicks - *from->processTicks) /
                           static_cast<double>(systemClockTicksPerSecond());
    return seconds / (to->wallClock - from->wallClock) * 100.0;
}
