#include "data/dialect/engine_limits.h"
#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>
#include <vector>

namespace liaowu::dialect {

namespace {

/// The engine's stack holds 100 entries; a few are always in use.
constexpr int stackEntries = 92;

/// Walks a statement as the engine's parser does and counts what it would hold on its stack: the operators of each
/// open parenthesis that still wait for their right side, and the parenthesis with its surroundings.
class StackMeter {
public:
    bool fits(std::string_view text);

private:
    enum class Before { Operand, Operator, List, Function }; ///< what stands before a symbol
    struct Level {
        int cost = 0;
        int select = 0;           ///< part of the cost that ends with its select
        std::vector<int> waiting; ///< ranks of operators, rising
    };
    std::vector<Level> levels = {Level()};
    Before before = Before::Operator;
    int total = 0;
    int highest = 0;

    void add(int entries) {
        total += entries;
        highest = std::max(highest, total);
    }
    void wait(int rank);
    void open(int entries);
    void close();
    void clear();
    void selectPart(int entries);
    void word(std::string_view word);
    void symbol(char c);
};

void StackMeter::wait(int rank) {
    std::vector<int>& waiting = levels.back().waiting;
    while (!waiting.empty() && waiting.back() >= rank) {
        waiting.pop_back();
        total -= 2;
    }
    waiting.push_back(rank);
    add(2);
}

void StackMeter::open(int entries) {
    levels.emplace_back();
    levels.back().cost = entries;
    add(entries);
}

void StackMeter::close() {
    if (levels.size() == 1) return;
    clear();
    total -= levels.back().cost;
    levels.pop_back();
}

void StackMeter::clear() {
    total -= 2 * static_cast<int>(levels.back().waiting.size());
    levels.back().waiting.clear();
}

/// What a select holds while one of its clauses is read.
void StackMeter::selectPart(int entries) {
    clear();
    Level& level = levels.back();
    total -= level.select;
    level.cost += entries - level.select;
    level.select = entries;
    add(entries);
}

void StackMeter::word(std::string_view word) {
    static constexpr std::array<std::pair<std::string_view, int>, 7> ranks = {
        {{"OR", 1}, {"AND", 2}, {"NOT", 3}, {"IN", 4}, {"BETWEEN", 4}, {"IS", 4}, {"COLLATE", 9}}};
    const auto ranked =
        std::find_if(ranks.begin(), ranks.end(), [&](const auto& entry) { return entry.first == word; });
    before = Before::Operator;
    if (ranked != ranks.end()) {
        wait(ranked->second);
        if (word == "IN") before = Before::List;
    } else if (word == "CASE") {
        open(6);
    } else if (word == "END") {
        close();
        before = Before::Operand;
    } else if (word == "SELECT") {
        selectPart(6);
    } else if (word == "FROM" || word == "WHERE" || word == "ON") {
        selectPart(8);
    } else if (word == "BY" || word == "HAVING") {
        selectPart(11);
    } else if (word == "WHEN" || word == "THEN" || word == "ELSE" || word == "SET" || word == "LIMIT") {
        clear();
    } else if (word == "VALUES" || word == "EXISTS") {
        before = Before::List;
    } else {
        before = Before::Function;
    }
}

void StackMeter::symbol(char c) {
    const bool prefix = before != Before::Operand;
    const int parenthesis = before == Before::Function ? 5 : before == Before::List ? 3 : 1;
    before = Before::Operator;
    switch (c) {
    case '(':
        open(parenthesis);
        break;
    case ')':
        close();
        before = Before::Operand;
        break;
    case ',':
        clear();
        break;
    case '=':
        wait(4);
        break;
    case '<':
    case '>':
        wait(5);
        break;
    case '+':
    case '-':
        wait(prefix ? 10 : 6);
        break;
    case '*':
        if (!prefix) wait(7);
        break;
    case '|':
        wait(8);
        break;
    default: // parts of numbers, parameters and names
        before = Before::Operand;
        break;
    }
}

bool StackMeter::fits(std::string_view text) {
    const auto isWordPart = [&](size_t at) {
        return std::isalnum(static_cast<unsigned char>(text[at])) || text[at] == '_';
    };
    for (size_t i = 0; i < text.size() && highest < stackEntries;) {
        const char c = text[i];
        if (c == '\'' || c == '"') {
            const size_t closing = text.find(c, i + 1);
            i = closing == std::string_view::npos ? text.size() : closing + 1;
            before = Before::Operand;
        } else if (std::isalpha(static_cast<unsigned char>(c)) || c == '_') {
            const size_t start = i;
            while (i < text.size() && isWordPart(i))
                ++i;
            word(text.substr(start, i - start));
        } else {
            if (c != ' ' && c != '\n') symbol(c);
            ++i;
        }
    }
    return highest < stackEntries;
}

} // namespace

bool fitsParserStack(const QByteArray& native) {
    return StackMeter().fits({native.constData(), static_cast<size_t>(native.size())});
}

} // namespace liaowu::dialect
