#pragma once
#include "common/session.h"

namespace liaowu {

class Connection;

/// How a document is numbered: its table and key, and the first running part of a day.
struct NumberSeries {
    QString table, key;
    QString firstRunning; ///< "001" or "0001"
    QString infix;        ///< behind the date; "T" for returns
    QString patternHead;  ///< "%" when the date may stand anywhere in the number
    QString condition;    ///< further SQL of the look-up
    QString errorTitle;
};
NumberSeries orderNumbers();
NumberSeries requisitionNumbers();
NumberSeries issueNumbers();
NumberSeries receiptNumbers();
NumberSeries returnNumbers();

/// The next number of a series by the server's date: prefix YYMMDD, then the highest number stored with it counted on, or
/// the first running part. Reads the table; reserves nothing, so the primary key settles who was first. Throws
/// `DatabaseError`.
QString nextDocumentNumber(Connection& connection, const NumberSeries& series);
/// The same on a fresh connection; a failure is shown under the series' title and gives an empty text.
QString nextDocumentNumber(Session& session, const NumberSeries& series);

} // namespace liaowu
