#pragma once
#include <QByteArrayView>
#include <optional>
#include <vector>

namespace liaowu::dialect {

/// A like pattern, compiled once. % is any text, _ one character, [..] and [^..] one of a set or none of it; the
/// escape character makes the next one stand for itself. Compares by `weight`; trailing blanks count.
class LikePattern {
public:
    LikePattern(QByteArrayView pattern, std::optional<char32_t> escape);
    bool matches(QByteArrayView text) const;

private:
    struct Range {
        char32_t low;
        char32_t high;
    };
    struct Item {
        enum class Kind { Character, One, Many, Set, Never } kind = Kind::Character;
        char32_t weight = 0;
        bool negated = false;
        std::vector<Range> ranges;
        bool takes(char32_t weight) const;
    };
    std::vector<Item> items;
};

} // namespace liaowu::dialect
