#include "Perluma/change_list.h"

#include "frame/raised_error.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using Perluma::ListaCambios;
using support::ErrorOf;
using testing::ElementsAre;

constexpr std::int32_t kOutside = static_cast<std::int32_t>(Zontara::RunTimeError::SubscriptOutOfRange);

TEST(ListaCambios, KeepsNoticesInTheirOrderTheEmptyOneToo) {
    ListaCambios list;
    EXPECT_EQ(list.Total(), 0);
    list.Agregar("");
    list.Agregar("A-1");
    EXPECT_EQ(list.Total(), 2);
    EXPECT_EQ(list.Elemento(1), "");
    EXPECT_EQ(list.Elemento(2), "A-1");
}

TEST(ListaCambios, NoNoticeStandsOutsideTheList) {
    ListaCambios list;
    list.Agregar("A-1");
    for (const std::int32_t position : {-1, 0, 2}) {
        SCOPED_TRACE(position);
        EXPECT_EQ(ErrorOf([&] { list.Elemento(position); }).number, kOutside);
    }
}

TEST(ListaCambios, SubscribersHearOfWhatComesInTheOrderInWhichTheyCame) {
    ListaCambios list;
    std::vector<std::string> heard;
    list.Agregar("before");
    const std::int32_t first = list.Subscribe([&](const std::string& notice) { heard.push_back("1 " + notice); });
    list.Subscribe([&](const std::string& notice) { heard.push_back("2 " + notice); });
    list.Agregar("a");
    list.Unsubscribe(first);
    list.Unsubscribe(99);
    list.Agregar("b");
    EXPECT_THAT(heard, ElementsAre("1 a", "2 a", "2 b"));
}

TEST(ListaCambios, ASubscriberMaySubscribeEndAndAddMeanwhile) {
    ListaCambios list;
    std::vector<std::string> heard;
    std::int32_t self = 0;
    self = list.Subscribe([&](const std::string& notice) {
        heard.push_back(notice);
        list.Unsubscribe(self);
        list.Subscribe([&](const std::string& later) { heard.push_back("later " + later); });
        list.Agregar("nested");
    });
    list.Agregar("first");
    EXPECT_THAT(heard, ElementsAre("first", "later nested"));
    EXPECT_EQ(list.Total(), 2);
}

TEST(ListaCambios, AFailingSubscriberIsHeardAndTheNoticeStays) {
    ListaCambios list;
    list.Subscribe([](const std::string&) { Zontara::RaiseError(77, "planner", "no"); });
    EXPECT_EQ(ErrorOf([&] { list.Agregar("a"); }).number, 77);
    EXPECT_EQ(list.Total(), 1);
}

}  // namespace
