#pragma once
#include <QString>
#include <QStringList>
#include <array>
#include <vector>

namespace liaowu {

class ConnectionPool;
class Messages;

/// The record of one launch that every screen reads: what the launch string said, who the user is, and what screens
/// hand to each other. Filled by `launch`, `loadUserProfile` and the screens; lives as long as the `Process`.
struct Session {
    explicit Session(ConnectionPool& connections, Messages& channel) : pool(connections), messages(channel) {}

    ConnectionPool& pool;
    Messages& messages;

    // launch
    QString commandLine;
    QString connectionString;
    QString functionName;
    QString userName;
    QString
        approvalParam; ///< "N" switches approval off for this launch; "Y" and empty are told apart by screens
    QString otherParam; ///< connection string of the second database
    QString screenFunction;
    QString category;    ///< item family word: 紙板, 物料, 紙品 or 凸版
    QString formulaMode; ///< of the formula screen at launch; later the family handed to a lookup window

    // user
    QString salesmanCode;
    QString salesmanName; ///< what the audit columns record
    bool isAdministrator = false;
    QString salesScope; ///< ready-made SQL, empty or " And (業務員代號='A' Or 業務員代號='B' ) "
    QString formula1;   ///< the company's formula for available stock
    QString
        databaseNotice; ///< what the first screen tells of the database; empty when there is nothing to tell

    // lookups
    QString pickParam;
    QStringList pickResult; ///< columns of the chosen row; empty when nothing was chosen
    QString pickCategory;
    QString pickMode;
    bool amountRight = false;
    std::vector<QStringList> requisitionPickRows;
    QString pickVendor;
    QString numberPartA, numberPartB, numberPartC;
    QString filterCode, filterName; ///< item handed to the price history windows

    // documents and approval
    bool documentSaved = false;
    QString scratchText;
    bool approveAllowed = false;
    bool reverseAllowed = false;
    QString scratchA;
    QString scratchB;
    bool approvalDone = false;

    /// Grid colours as decimal text of a blue-green-red number: area outside the cells, cell background, fixed row
    /// and column background, their text, selection background, selection text, grid lines.
    std::array<QString, 7> gridColours;

    /// Element i of the chosen row, trimmed; empty when there is none.
    QString picked(int element) const { return pickResult.value(element).trimmed(); }
};

} // namespace liaowu
