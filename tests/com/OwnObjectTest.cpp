// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "com/ComObject.h"
#include "com/Create.h"
#include "com/OwnObject.h"
#include "tests/support/ForwardingOuter.h"

struct LARYNTH_INTERFACE(IPlain, "5d1c5a4e-0c5f-4f0e-9a51-3f6f0d1f7a03") : IUnknown {};
struct LARYNTH_INTERFACE(IRole, "5d1c5a4e-0c5f-4f0e-9a51-3f6f0d1f7a04") : IUnknown {};

namespace larynth::test {
namespace {

template <int kNumber>
class Example final : public ComObject<IPlain, IRole> {
  public:
    using RecognisedBy = IRole;
    using ComObject::ComObject;
};
using Own = Example<1>;
using Sibling = Example<2>;
using NeverMade = Example<3>;

TEST(OwnObject, FindsOnlyAnObjectOfTheClassThatStandsAloneByItsRole) {
    const auto sibling = MakeObject<Sibling>();  // first: what is learnt later must not be its table
    const auto object = MakeObject<Own>(), another = MakeObject<Own>();
    ForwardingOuter outer;
    const auto part = MakeObject<Own>(&outer);
    const auto role = [](const auto& of) { return static_cast<IRole*>(of.get()); };

    EXPECT_EQ(OwnObject<Own>::Find(role(object)), object.get());
    EXPECT_EQ(OwnObject<Own>::Find(role(another)), another.get());
    EXPECT_EQ(OwnObject<Sibling>::Find(role(sibling)), sibling.get());
    const struct {
        const char* what;
        IUnknown* pointer;
    } rows[] = {{"nothing", nullptr},
                {"a part of another object", role(part)},
                {"the part as its owner holds it", &part->Inner()},
                {"another class with the same interfaces", role(sibling)},
                {"another interface", static_cast<IPlain*>(object.get())},
                {"the inner IUnknown", &object->Inner()},
                {"an object of no class of ours", &outer}};
    for (const auto& row : rows) EXPECT_EQ(OwnObject<Own>::Find(row.pointer), nullptr) << row.what;
    EXPECT_EQ(OwnObject<NeverMade>::Find(role(object)), nullptr);
}

}  // namespace
}  // namespace larynth::test
