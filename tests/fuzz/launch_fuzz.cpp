// libFuzzer target: any launch string gives values.
#include "app/launch_string.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const liaowu::LaunchValues values = liaowu::parseLaunch(text.trimmed());
    liaowu::launchTarget(values.function.trimmed());
    return 0;
}
