#include "formula/evaluator.h"
#include "data/number_text.h"
#include <cmath>

namespace liaowu {

using namespace Qt::StringLiterals;

CStack::Variant CStack::Pop() {
    if (items.empty()) throw FormulaError(FormulaError::EmptyPop, u"Pop method invoked on empty stack"_s);
    Variant top = std::move(items.back());
    items.pop_back();
    return top;
}

const CStack::Variant& CStack::GetPopValue() const {
    if (items.empty())
        throw FormulaError(FormulaError::EmptyGetPop, u"GetPopValue method invoked on empty stack"_s);
    return items.back();
}

double CSymbolTable::checkedValue(const QString& nValue) {
    bool ok = false;
    const double value = nValue.trimmed().toDouble(&ok);
    if (!ok) throw FormulaError(FormulaError::InvalidValue, u"Invalid symbol value"_s);
    return value;
}

void CSymbolTable::Add(const QString& sName, const QString& nValue) {
    if (IsSymbolDefined(sName)) throw FormulaError(FormulaError::AlreadyDefined, u"Symbol already defined"_s);
    values.insert(sName.toUpper(), checkedValue(nValue));
}

void CSymbolTable::Update(const QString& sName, const QString& nValue) {
    if (!IsSymbolDefined(sName)) throw FormulaError(FormulaError::NotDefined, u"Symbol not defined"_s);
    values.insert(sName.toUpper(), checkedValue(nValue));
}

double CSymbolTable::Value(const QString& sName) const {
    if (!IsSymbolDefined(sName)) throw FormulaError(FormulaError::NotDefined, u"Symbol not defined"_s);
    return values.value(sName.toUpper());
}

bool CEval::IsSymbolStart(QChar c) {
    const QChar upper = c.toUpper();
    return (upper >= u'A' && upper <= u'Z') || c == u'_';
}

bool CEval::IsSymbolChar(QChar c) {
    const QChar upper = c.toUpper();
    return (upper >= u'A' && upper <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_';
}

int CEval::Precedence(const QString& token) {
    if (token == u"+" || token == u"-") return 1;
    if (token == u"*" || token == u"/") return 2;
    if (token == u"^") return 3;
    if (token == u"(-)") return 10;
    return 0;
}

int CEval::failed(const char16_t* message, qsizetype column) {
    lastError = QString::fromUtf16(message);
    return static_cast<int>(column);
}

int CEval::ToPostfix(const QString& text, QString& tokens) {
    enum class State { Start, Operand, Operator, Sign } state = State::Start;
    CStack operators;
    int depth = 0;
    tokens.clear();
    lastError.clear();
    const auto top = [&] { return std::get<QString>(operators.GetPopValue()); };
    const auto popToOutput = [&] { tokens += std::get<QString>(operators.Pop()) + u' '; };

    qsizetype i = 0;
    while (i < text.size()) {
        const QChar c = text[i];
        const qsizetype column = i + 1;
        if (c == u'(') {
            if (state == State::Operand) return failed(u"Operator expected", column);
            if (state == State::Sign) state = State::Operator;
            operators.Push(QString(c));
            ++depth;
            ++i;
        } else if (c == u')') {
            if (state != State::Operand) return failed(u"Operand expected", column);
            if (depth == 0) return failed(u"Closing parenthesis without matching open parenthesis", column);
            while (top() != u"(")
                popToOutput();
            operators.Pop();
            --depth;
            ++i;
        } else if (c == u'+' || c == u'-' || c == u'*' || c == u'/' || c == u'^') {
            if (state == State::Operand) {
                const int precedence = Precedence(QString(c));
                while (operators.StackSize() > 0 && Precedence(top()) >= precedence)
                    popToOutput();
                operators.Push(QString(c));
                state = State::Operator;
            } else {
                if (state == State::Sign || (c != u'-' && c != u'+'))
                    return failed(u"Operand expected", column);
                if (c == u'-') operators.Push(u"(-)"_s);
                state = State::Sign;
            }
            ++i;
        } else if ((c >= u'0' && c <= u'9') || c == u'.') {
            if (state == State::Operand) return failed(u"Operator expected", column);
            QString operand;
            for (; i < text.size() && ((text[i] >= u'0' && text[i] <= u'9') || text[i] == u'.'); ++i) {
                if (text[i] == u'.' && operand.contains(u'.'))
                    return failed(u"Operand contains multiple decimal points", i + 1);
                operand += text[i];
            }
            if (operand == u".") return failed(u"Invalid operand", column);
            tokens += operand + u' ';
            state = State::Operand;
        } else if (c <= u' ') {
            ++i;
        } else {
            if (state == State::Operand) return failed(u"Operator expected", column);
            if (!IsSymbolStart(c)) return failed(u"Unexpected character encountered", column);
            QString name;
            while (i < text.size() && IsSymbolChar(text[i]))
                name += text[i++];
            if (!m_SymbolTable.IsSymbolDefined(name)) {
                lastError = u"Undefined symbol : '"_s + name + u'\'';
                return static_cast<int>(column);
            }
            tokens += numberText(m_SymbolTable.Value(name)) + u' ';
            state = State::Operand;
        }
    }
    if (state == State::Operator || state == State::Sign) return failed(u"Operand expected", text.size() + 1);
    if (depth > 0) return failed(u"Closing parenthesis expected", text.size() + 1);
    while (operators.StackSize() > 0)
        popToOutput();
    return 0;
}

double CEval::EvaluatePostfix(const QString& tokens) const {
    CStack values;
    const auto pop = [&] { return std::get<double>(values.Pop()); };
    const auto push = [&](double value) {
        if (!std::isfinite(value)) throw FormulaError(FormulaError::Overflow, u"Overflow"_s);
        values.Push(value);
    };
    qsizetype from = 0;
    for (qsizetype blank; (blank = tokens.indexOf(u' ', from)) >= 0; from = blank + 1) {
        const QString token = tokens.mid(from, blank - from);
        bool numeric = false;
        const double number = token.toDouble(&numeric);
        if (numeric) {
            push(number);
        } else if (token == u"+") {
            const double right = pop();
            push(pop() + right);
        } else if (token == u"*") {
            const double right = pop();
            push(pop() * right);
        } else if (token == u"-") {
            const double right = pop();
            push(pop() - right);
        } else if (token == u"/") {
            const double right = pop();
            const double left = pop();
            if (right == 0) throw FormulaError(FormulaError::DivisionByZero, u"Division by zero"_s);
            push(left / right);
        } else if (token == u"^") {
            const double right = pop();
            const double power = std::pow(pop(), right);
            if (std::isnan(power))
                throw FormulaError(FormulaError::InvalidCall, u"Invalid procedure call or argument"_s);
            push(power);
        } else if (token == u"(-)") {
            push(-pop());
        } else {
            throw FormulaError(FormulaError::BadToken, u"Bad token in Evaluate: "_s + token);
        }
    }
    return values.StackSize() > 0 ? pop() : 0;
}

double CEval::Evaluate(const QString& sExpression) {
    QString tokens;
    if (const int column = ToPostfix(sExpression, tokens))
        throw FormulaError(FormulaError::Conversion, lastError + u" : Column "_s + QString::number(column));
    return EvaluatePostfix(tokens);
}

} // namespace liaowu
