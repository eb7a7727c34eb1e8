#pragma once

#include "Perluma/provider.h"
#include "Perluma/session.h"
#include "dhRichClient3/connection.h"
#include "frame/convert.h"
#include "frame/raised_error.h"
#include "schema/create.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

/// A session on a fresh database in memory, not installed anywhere.
class SessionTest : public testing::Test {
protected:
    SessionTest() {
        schema::Create(*connection);
        provider = std::make_shared<Perluma::Provider>(connection);
    }

    void Run(std::string_view sql) { connection->RunScript(sql); }
    void Begin() { connection->IniciarTrans(""); }
    void Commit() { connection->ConfirmarTrans(""); }
    void Rollback() { connection->RevertirTrans("", 0); }
    std::int32_t Key(const std::string& table) { return provider->Session().ElGeneradorClaves()->ProximaClave(table); }

    static std::vector<std::string> RowsOf(dhRichClient3::Connection& where, const std::string& sql) {
        std::vector<std::string> rows;
        auto query = where.Prepare(sql);
        while (query.Step()) {
            std::string row;
            for (int column = 0; column < query.ColumnCount(); ++column) {
                if (column > 0) row += '|';
                row += query.IsNull(column) ? "NULL" : Zontara::ToText(query.Value(column));
            }
            rows.push_back(row);
        }
        return rows;
    }
    std::vector<std::string> Rows(const std::string& sql) { return RowsOf(*connection, sql); }

    Zontara::Ref<dhRichClient3::Connection> connection = dhRichClient3::Connection::Open(":memory:");
    std::shared_ptr<Perluma::Provider> provider;
};
