#pragma once
#include "data/connection.h"
#include "dbtool/demo_plant.h"

namespace liaowu::demo {

/// Write the plant into an empty database, inside the caller's transaction.
void writeVocabulary(Connection& connection, const Plant& plant);
void writeUsers(Connection& connection, const Plant& plant);
void writeMasters(Connection& connection, const Plant& plant);
void writePurchasing(Connection& connection, const Plant& plant);
void writeWarehouse(Connection& connection, const Plant& plant);
void writeOtherModules(Connection& connection, const Plant& plant);

} // namespace liaowu::demo
