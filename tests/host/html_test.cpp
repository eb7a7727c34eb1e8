#include "host/text/html.h"

#include <gtest/gtest.h>

namespace {

using host::text::Html;
using host::text::HtmlLines;

TEST(Html, NothingOfATextIsMarkup) {
    EXPECT_EQ(Html("<b class=\"x\">R&D 'n' more</b>"),
              "&lt;b class=&quot;x&quot;&gt;R&amp;D &#39;n&#39; more&lt;/b&gt;");
    EXPECT_EQ(Html("Mecánica, línea 1"), "Mecánica, línea 1");
    EXPECT_EQ(Html(""), "");
}

TEST(Html, EndsOfLinesBecomeBreaks) {
    EXPECT_EQ(HtmlLines("1. Stop.\r\n2. <Grease>."), "1. Stop.<br>\n2. &lt;Grease&gt;.");
    EXPECT_EQ(HtmlLines("one"), "one");
}

}  // namespace
