#pragma once
#include "data/sql_text.h"
#include <QStringList>
#include <functional>
#include <vector>

namespace liaowu {

/// What the boxes of a batch page say.
struct BatchInput {
    QString fromDate, toDate, fromNumber, toNumber;
};

/// A batch approval page, declared. The first column of the list is the document's number.
struct BatchSpec {
    QString page;            ///< objectName
    QStringList dateBoxes;   ///< names of the two date boxes
    QStringList numberBoxes; ///< names of the two number boxes
    BatchInput defaults;
    struct Column {
        QString title;
        int width = 1200; ///< twips
    };
    std::vector<Column> columns;
    QString markTitle = QStringLiteral("審單");
    std::function<SqlText(const BatchInput&)> list;       ///< columns in the order of `columns`
    std::function<SqlText(const QString& number)> detail; ///< lines of a document
    /// Approves one document; what it throws stops that document only.
    std::function<void(const QString& number)> approve;
};

} // namespace liaowu
