#pragma once
#include <QtGlobal>
#include <vector>

namespace liaowu::demo {

/// Numbers that look like chance and are the same on every machine and in every run.
class Dice {
public:
    explicit Dice(quint64 seed) : state(seed) {}

    /// 0 to `count` - 1.
    int below(int count) { return static_cast<int>(next() % static_cast<quint64>(count)); }
    int between(int least, int most) { return least + below(most - least + 1); }
    bool chance(double probability) { return unit() < probability; }
    /// 0 to below 1.
    double unit() { return static_cast<double>(next() >> 11) / 9007199254740992.0; }
    /// An index where low ones come far more often, as in every store: a few items make most of the movements.
    int skewed(int count) {
        const double u = unit();
        return static_cast<int>(static_cast<double>(count) * u * (0.3 + 0.7 * u) * (0.55 + 0.45 * u));
    }
    template <typename T>
    const T& pick(const std::vector<T>& list) {
        return list[static_cast<std::size_t>(below(static_cast<int>(list.size())))];
    }

private:
    quint64 next() {
        state += 0x9e3779b97f4a7c15u;
        quint64 mixed = state;
        mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebu;
        return mixed ^ (mixed >> 31);
    }
    quint64 state;
};

} // namespace liaowu::demo
