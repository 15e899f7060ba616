#pragma once
#include "data/dialect/ast.h"
#include "data/dialect/lexer.h"

namespace liaowu::dialect {

/// Builds the tree of a shape: one statement or several. Throws `DatabaseError` (NotCovered) with sentence and
/// position for what the subset does not know.
class Parser {
public:
    explicit Parser(const Lifted& statement) : tokens(tokenize(statement)) {}
    std::vector<Statement> parse();

private:
    std::vector<Token> tokens;
    size_t at = 0;
    int depth = 0;
    int operations = 0; ///< of the arithmetic in one statement: they bound the depth of its tree

    /// Counts nesting, so that no statement exhausts the stack here or in the engine.
    class Nested {
    public:
        explicit Nested(Parser& in);
        ~Nested() { --parser.depth; }
        Nested(const Nested&) = delete;
        Nested& operator=(const Nested&) = delete;

    private:
        Parser& parser;
    };

    const Token& peek(size_t ahead = 0) const { return tokens[std::min(at + ahead, tokens.size() - 1)]; }
    const Token& next() {
        const Token& token = peek();
        if (at + 1 < tokens.size()) ++at;
        return token;
    }
    bool isWord(QStringView word, size_t ahead = 0) const;
    bool isSymbol(QStringView symbol, size_t ahead = 0) const;
    bool takeWord(QStringView word);
    bool takeSymbol(QStringView symbol);
    void expectWord(QStringView word);
    void expectSymbol(QStringView symbol);
    [[noreturn]] void unexpected() const;
    [[noreturn]] void notCovered(const QString& what) const;
    /// A name that may be bracketed, quoted or plain.
    bool isName(size_t ahead = 0) const;
    QString name();
    /// Name of a table, view or function behind its prefixes ("erp.dbo.x", "erp..x").
    QString objectName();

    ExprPtr make(Expr::Kind kind) const;
    ExprPtr expression();
    ExprPtr conjunction();
    ExprPtr negation();
    ExprPtr predicate();
    ExprPtr sum();
    ExprPtr product();
    ExprPtr operation(ExprPtr left);
    ExprPtr unary();
    ExprPtr primary();
    ExprPtr literal();
    ExprPtr inPredicate(ExprPtr value);
    ExprPtr parenthesized();
    ExprPtr caseExpression();
    ExprPtr castExpression();
    ExprPtr convertExpression();
    ExprPtr call();
    ExprPtr column();
    TypeName typeName(int defaultLength);

    std::unique_ptr<Select> select();
    SelectArm arm();
    SelectItem selectItem();
    std::optional<QString> itemAlias();
    std::unique_ptr<TableRef> joined();
    std::unique_ptr<TableRef> joinedFrom(std::unique_ptr<TableRef> left);
    std::unique_ptr<TableRef> tablePrimary();
    std::optional<TableRef::Join> joinWord();
    void orderBy(Select& into);

    Statement statement();
    Statement insertStatement();
    Statement updateStatement();
    Statement deleteStatement();
    Statement createStatement();
    Statement createTable();
    Statement createIndex(bool unique);
    Statement createView();
    Statement alterStatement();
    Statement dropStatement();
    Statement start(Statement::Kind kind);
    void objectInto(Statement& statement);
    ColumnDefinition columnDefinition(std::vector<KeyDefinition>& keys);
    bool keyConstraint(std::vector<KeyDefinition>& keys);
    void columnList(Statement& statement, bool withOrder);
};

} // namespace liaowu::dialect
