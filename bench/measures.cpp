#include "measures.h"
#include <QFile>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

double statusMebibytes(const QByteArray& field) {
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith(field))
            return line.mid(field.size()).trimmed().split(' ').first().toDouble() / 1024;
    return 0;
}

} // namespace

double median(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times.empty() ? 0 : times[times.size() / 2];
}

double worst(const std::vector<double>& times) {
    return times.empty() ? 0 : *std::max_element(times.begin(), times.end());
}

void row(const QString& name, double ours, double limit) {
    std::printf("%-44s %12.1f us %12.1f us %8.2f x\n", qPrintable(name), ours, limit,
                limit > 0 ? ours / limit : 0);
}

void stepsRow(const QString& name, const std::vector<double>& times) {
    std::printf("%-56s %10.2f ms median %8.2f ms worst of %zu\n", qPrintable(name), median(times) / 1000,
                worst(times) / 1000, times.size());
}

double residentMebibytes() {
    return statusMebibytes("VmRSS:");
}
double peakMebibytes() {
    return statusMebibytes("VmHWM:");
}

void giveUp(const QString& why) {
    std::fprintf(stderr, "%s\n", qPrintable(why));
    std::exit(1);
}

} // namespace liaowu
