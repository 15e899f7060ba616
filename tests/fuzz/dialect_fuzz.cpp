#include "data/dialect/engine.h"
#include "data/schema/schema.h"
#include <cstdio>
#include <cstdlib>

// Any text must translate to something that the engine takes, or be refused with number and sentence.
//   cmake -B build/fuzz -DLIAOWU_FUZZ=ON -DCMAKE_CXX_COMPILER=clang++ && cmake --build build/fuzz --target dialect_fuzz
//   split -l 1 tests/data/dialect/statements.txt corpus/ && build/fuzz/bin/dialect_fuzz corpus

using namespace liaowu;
using namespace liaowu::dialect;

namespace {

Engine& engine() {
    static Engine* const made = [] {
        auto* fresh = new Engine;
        for (const QString& statement : schemaStatements())
            fresh->run(statement);
        return fresh;
    }();
    return *made;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString surprise = engine().surprise(text);
    if (!surprise.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(surprise));
        std::abort();
    }
    return 0;
}
