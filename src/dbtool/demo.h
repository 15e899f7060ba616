#pragma once
#include "data/connection_pool.h"

namespace liaowu {

/// What a demo database holds.
struct DemoSummary {
    int requisitions = 0, orders = 0, orderLines = 0, receipts = 0, issues = 0;
};

/// Fills a database with a plant that looks like a real one and is the same in every run. Makes the tables first. At
/// `scale` 1 about 1,500 requisitions and 2,000 orders over 14 months; fractions are allowed. Throws
/// `DatabaseError` (Usage) when the database holds documents or users already.
DemoSummary createDemo(ConnectionPool& pool, const QString& connectionString, double scale);

/// Most that one day's numbers of orders leave room for.
inline constexpr int LargestDemoScale = 150;

} // namespace liaowu
