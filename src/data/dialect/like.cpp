#include "data/dialect/like.h"
#include "data/dialect/collation.h"

namespace liaowu::dialect {

LikePattern::LikePattern(QByteArrayView pattern, std::optional<char32_t> escape) {
    const char* at = pattern.data();
    const char* const end = at + pattern.size();
    while (at < end) {
        char32_t c = nextCharacter(at, end);
        Item item;
        if (escape && c == *escape && at < end) {
            item.weight = weight(nextCharacter(at, end));
        } else if (c == U'%') {
            item.kind = Item::Kind::Many;
            if (!items.empty() && items.back().kind == Item::Kind::Many) continue;
        } else if (c == U'_') {
            item.kind = Item::Kind::One;
        } else if (c == U'[') {
            item.kind = Item::Kind::Set;
            if (at < end && *at == '^') {
                item.negated = true;
                ++at;
            }
            bool closed = false;
            while (at < end && !closed) {
                c = nextCharacter(at, end);
                closed = c == U']';
                if (closed) break;
                if (escape && c == *escape && at < end) c = nextCharacter(at, end);
                Range range{weight(c), weight(c)};
                if (end - at >= 2 && at[0] == '-' && at[1] != ']') {
                    ++at;
                    range.high = weight(nextCharacter(at, end));
                }
                item.ranges.push_back(range);
            }
            if (!closed) item.kind = Item::Kind::Never;
        } else {
            item.weight = weight(c);
        }
        items.push_back(std::move(item));
    }
}

bool LikePattern::Item::takes(char32_t character) const {
    switch (kind) {
    case Kind::Character:
        return character == weight;
    case Kind::One:
        return true;
    case Kind::Set: {
        bool found = false;
        for (const Range& range : ranges)
            found = found || (character >= range.low && character <= range.high);
        return found != negated;
    }
    case Kind::Many:
    case Kind::Never:
        break;
    }
    return false;
}

bool LikePattern::matches(QByteArrayView text) const {
    const char* at = text.data();
    const char* const end = at + text.size();
    size_t item = 0;
    // The last % is the only one worth going back to.
    size_t many = items.size();
    const char* retry = nullptr;
    for (;;) {
        if (item < items.size() && items[item].kind == Item::Kind::Many) {
            many = item++;
            if (item == items.size()) return true;
            retry = at;
            continue;
        }
        if (at == end) return item == items.size();
        const char* next = at;
        if (item < items.size() && items[item].takes(weight(nextCharacter(next, end)))) {
            at = next;
            ++item;
        } else if (retry) {
            nextCharacter(retry, end);
            at = retry;
            item = many + 1;
        } else {
            return false;
        }
    }
}

} // namespace liaowu::dialect
