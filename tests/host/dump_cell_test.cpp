#include "host/dump/cell.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using host::dump::Bytes;
using host::dump::FromCsv;
using host::dump::Stored;
using host::dump::ToCsv;

TEST(DumpCell, ANumberReadsBackAsTheSameNumberOfItsKind) {
    for (const double number : {0.0, 1.0, -2.5, 0.1, 1e15, 1e300, 5e-324, 123456789.123456789,
                                std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()}) {
        const std::optional<Stored> back = FromCsv(ToCsv(number), false);
        ASSERT_TRUE(back) << number;
        ASSERT_TRUE(std::holds_alternative<double>(*back)) << ToCsv(number);
        EXPECT_EQ(std::get<double>(*back), number);
    }
    for (const std::int64_t number :
         {std::int64_t{0}, std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
        const std::optional<Stored> back = FromCsv(ToCsv(number), false);
        ASSERT_TRUE(back) << number;
        ASSERT_TRUE(std::holds_alternative<std::int64_t>(*back)) << ToCsv(number);
        EXPECT_EQ(std::get<std::int64_t>(*back), number);
    }
}

TEST(DumpCell, NullEmptyTextAndBytesDiffer) {
    EXPECT_EQ(ToCsv({}), "");
    EXPECT_EQ(ToCsv(std::string()), "\"\"");
    EXPECT_EQ(ToCsv(Bytes{}), "x''");
    EXPECT_TRUE(std::holds_alternative<std::monostate>(FromCsv("", false).value()));
    EXPECT_EQ(std::get<std::string>(FromCsv("", true).value()), "");
    EXPECT_EQ(std::get<Bytes>(FromCsv("x'00ff'", false).value()).bytes, std::string("\0\xff", 2));
    EXPECT_EQ(std::get<std::string>(FromCsv("t'c3'", false).value()), "\xc3");
    EXPECT_EQ(std::get<std::string>(FromCsv("t'c3'", true).value()), "t'c3'");
}

TEST(DumpCell, WhatIsNoneOfTheFormsIsNoValue) {
    for (const char* cell : {"h", "1,5", "1x", "--1", "x'0'", "x'0g'", "x'", "t'00", "0x10", "nan", "1e999", " 1"})
        EXPECT_FALSE(FromCsv(cell, false)) << cell;
}

}  // namespace
