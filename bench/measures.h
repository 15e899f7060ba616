#pragma once
#include <QElapsedTimer>
#include <QString>
#include <vector>

namespace liaowu {

template <typename Work>
double microseconds(Work work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1000;
}

/// Of durations in any unit; 0 when there are none.
double median(std::vector<double> times);
double worst(const std::vector<double>& times);

/// A line of the printed table, both in microseconds; a limit of 0 is none.
void row(const QString& name, double ours, double limit);
/// A line of steps that a person takes one after the other, in microseconds.
void stepsRow(const QString& name, const std::vector<double>& times);

/// What this process holds in memory now, and the most that it ever held.
double residentMebibytes();
double peakMebibytes();

/// Ends a benchmark that would measure something else than it says.
[[noreturn]] void giveUp(const QString& why);

} // namespace liaowu
