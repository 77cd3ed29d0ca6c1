// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "engine/Exception.h"

namespace {

TEST(Exception, CarriesTextsAndPlaceThroughTheStandardBase) {
    try {
        const Zelvani::Exception original("null pointer has been used", "no voice", "ComPtr", 115);
        throw Zelvani::Exception(original);
    } catch (const std::exception& caught) {
        EXPECT_STREQ(caught.what(), "Zelvani Exception");
        const auto& exception = dynamic_cast<const Zelvani::Exception&>(caught);
        EXPECT_STREQ(exception.Condition(), "null pointer has been used");
        EXPECT_STREQ(exception.Message(), "no voice");
        EXPECT_STREQ(exception.File(), "ComPtr");
        EXPECT_EQ(exception.Line(), 115);
    }
}

}  // namespace
