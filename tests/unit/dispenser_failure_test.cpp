// A failing server call ends the console through the error report: the
// function box already shows the command, the data box still shows what it
// showed, and only the authorization has already copied its block.
#include "unit/dispenser_helpers.h"

namespace vantrel {
namespace {

using testing::Block;
using testing::MarkUntouched;
using testing::TestConsole;

struct FailureCase {
    const char* button;
    const char* member;
    const char16_t* functionBox;
    Text commandData;
};

class DispenserFailure : public ::testing::TestWithParam<FailureCase> {};

TEST_P(DispenserFailure, GoesToTheReportWithTheDataBoxUnchanged) {
    const FailureCase& c = GetParam();
    TestConsole test;
    MarkUntouched(test.console());
    test.server().QueueFailure(c.member, RuntimeError(438, "Object doesn't support this property or method"));
    test.Click(c.button);
    ASSERT_EQ(1u, test.report().errors.size());
    EXPECT_EQ(438, test.report().errors[0].number());
    ASSERT_EQ(1u, test.calls().size());
    EXPECT_EQ(c.member, test.calls()[0].member);
    EXPECT_TEXT(c.functionBox, test.console().FunctionBox());
    EXPECT_TEXT(u"data before", test.console().DataBox());
    EXPECT_EQ(Variant::OfText(c.commandData), test.console().CommandData);
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, DispenserFailure,
    ::testing::Values(FailureCase{"PresetMOP1", "Authorize", u"<Object>.Authorize (data)",
                                  Block(u"FuelingPosition=01\r\nHose=0\r\nMOP=1\r\nLimit=000500\r\n")},
                      FailureCase{"Price3Blend", "Price", u"<Object>.Price = (data)", u"command data before"},
                      FailureCase{"Deauthorize", "Deauthorize", u"<Object>.DeAuthorize = (01)", u"command data before"},
                      FailureCase{"STOP_ALL", "Stop", u"<Object>.Stop = (0)", u"command data before"},
                      FailureCase{"DispenserInfo", "DispenserInformation",
                                  u"(return data)=<Object>.DispenserInformation (passed data)",
                                  u"command data before"}));

}  // namespace
}  // namespace vantrel
