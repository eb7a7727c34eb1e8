#pragma once

#include "dhRichClient3/connection.h"

#include <string>
#include <vector>

/// The database that the component expects: its own tables, those of the wider product that it reads, and those of the
/// sibling library. The DDL stands in `component.sql` and `product.sql`.
namespace schema {

/// Creates all tables, indexes and the trigger: all or nothing, in one transaction, or inside the one that the caller
/// has open. When one of the tables is there already, error vbObjectError + 1 with its name; nothing is changed then.
/// In the caller's transaction a failure leaves it to the caller to roll back.
void Create(dhRichClient3::Connection& connection);

/// Whether every table of the schema is there, of whatever columns.
bool Exists(dhRichClient3::Connection& connection);

/// Whether the database holds no table at all: a new one, which `Create` may fill.
bool IsEmpty(dhRichClient3::Connection& connection);

/// Names of the tables of the schema, the wider product's first, in the order of the DDL.
std::vector<std::string> Tables();

/// Those of them that the database lacks: what a host names when it turns a database down.
std::vector<std::string> MissingTables(dhRichClient3::Connection& connection);

}  // namespace schema
