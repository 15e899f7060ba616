#pragma once
#include <QHash>
#include <QString>
#include <stdexcept>
#include <variant>
#include <vector>

namespace liaowu {

/// What the formula engine raises: one of its numbers and the text that goes with it.
class FormulaError : public std::runtime_error {
public:
    static constexpr quint32 Conversion = 0x800403E9, BadToken = 0x800403EA, EmptyPop = 0x800403F3,
                             EmptyGetPop = 0x800403F4, InvalidValue = 0x800403FC, AlreadyDefined = 0x800403FD,
                             NotDefined = 0x800403FE;
    /// Arithmetic failures carry the numbers of the runtime: 11 division by zero, 6 overflow, 5 no real result.
    static constexpr quint32 DivisionByZero = 11, Overflow = 6, InvalidCall = 5;

    FormulaError(quint32 errorNumber, const QString& text)
        : std::runtime_error(text.toStdString()), number(errorNumber), description(text) {}
    quint32 number;
    QString description;
};

/// A growing stack of numbers and texts.
class CStack {
public:
    using Variant = std::variant<double, QString>;
    int StackSize() const { return static_cast<int>(items.size()); }
    void Push(Variant value) { items.push_back(std::move(value)); }
    /// The top value, removed. Throws `FormulaError` on an empty stack.
    Variant Pop();
    /// The top value, left in place. Throws `FormulaError` on an empty stack.
    const Variant& GetPopValue() const;

private:
    std::vector<Variant> items;
};

/// Named numbers; names compare without case.
class CSymbolTable {
public:
    /// Throws `FormulaError` for a name that is defined already and for a value that is no number.
    void Add(const QString& sName, const QString& nValue);
    void Delete(const QString& sName) { values.remove(sName.toUpper()); }
    bool IsSymbolDefined(const QString& sName) const { return values.contains(sName.toUpper()); }
    void Update(const QString& sName, const QString& nValue);
    double Value(const QString& sName) const;
    int Count() const { return static_cast<int>(values.size()); }

private:
    static double checkedValue(const QString& nValue);
    QHash<QString, double> values;
};

/// Turns the text of an arithmetic expression into a number: infix to postfix, then a stack.
class CEval {
public:
    /// Value of the expression; an empty one is 0. A fault in the text throws `FormulaError` Conversion with
    /// message and column ("Operand expected : Column 3"); arithmetic faults throw too.
    double Evaluate(const QString& sExpression);
    /// Writes the tokens, each ended by a blank, to `tokens`; gives the failure column, 0 for success.
    int ToPostfix(const QString& sExpression, QString& tokens);
    static int Precedence(const QString& token);
    double EvaluatePostfix(const QString& tokens) const;
    static bool IsSymbolStart(QChar c);
    static bool IsSymbolChar(QChar c);

    CSymbolTable m_SymbolTable;

private:
    int failed(const char16_t* message, qsizetype column);
    QString lastError;
};

} // namespace liaowu
