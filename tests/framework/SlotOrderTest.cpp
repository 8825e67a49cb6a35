#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "contracts/UserInterface.h"
#include "contracts/UserInterfaceModule.h"
#include "framework/Kxcommandinterfaces.h"
#include "framework/kxcomponents.h"

/// The order of virtual operations is what binds a host and an extension that were not built together. A
/// pointer to a virtual member holds the operation's place in the table of its class.

namespace {

/// Place of a virtual operation, from 0. The compilers of both systems represent the pointer alike: byte
/// offset into the table plus 1.
template <typename Member>
std::ptrdiff_t SlotOf(Member member) {
  std::ptrdiff_t parts[2] = {};
  static_assert(sizeof member == sizeof parts, "a pointer to a member is an offset and an adjustment");
  std::memcpy(parts, &member, sizeof parts);
  EXPECT_EQ(parts[0] & 1, 1) << "not a virtual operation";
  return (parts[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

struct Slot {
  const char* name;
  std::ptrdiff_t actual;
  std::ptrdiff_t expected;
};

void PrintTo(const Slot& slot, std::ostream* out) { *out << slot.name; }

class SlotOrder : public testing::TestWithParam<Slot> {};

TEST_P(SlotOrder, IsTheDocumentedOne) { EXPECT_EQ(GetParam().actual, GetParam().expected); }

std::string NameOf(const testing::TestParamInfo<Slot>& info) { return info.param.name; }

using DescribeOwn = void (TKXRunEdit::*)(std::string&);
using DescribeGiven = void (TKXRunEdit::*)(std::string&, const TParamList&);

INSTANTIATE_TEST_SUITE_P(
    Command, SlotOrder,
    testing::Values(Slot{"EditCommand", SlotOf(&TKXRunEdit::EditCommand), 0},
                    Slot{"RunCommand", SlotOf(&TKXRunEdit::RunCommand), 1},
                    Slot{"RecodeScript", SlotOf(&TKXRunEdit::RecodeScript), 2},
                    Slot{"SetDefaults", SlotOf(&TKXRunEdit::SetDefaults), 3},
                    Slot{"PostEdit", SlotOf(&TKXRunEdit::PostEdit), 4},
                    Slot{"GetDescriptionOfOwnParams", SlotOf(DescribeOwn{&TKXRunEdit::GetDescription}), 5},
                    Slot{"GetID", SlotOf(&TKXRunEdit::GetID), 6},
                    Slot{"CheckParams", SlotOf(&TKXRunEdit::CheckParams), 7},
                    Slot{"Create", SlotOf(&TKXRunEdit::Create), 8},
                    Slot{"RunThreaded", SlotOf(&TKXRunEdit::RunThreaded), 9},
                    Slot{"Edit", SlotOf(&TKXRunEdit::Edit), 10},
                    Slot{"SetParams", SlotOf(&TKXRunEdit::SetParams), 11},
                    Slot{"ReadParams", SlotOf(&TKXRunEdit::ReadParams), 12},
                    Slot{"DecodeScript", SlotOf(&TKXRunEdit::DecodeScript), 13},
                    Slot{"ParseCommandLine", SlotOf(&TKXRunEdit::ParseCommandLine), 14},
                    Slot{"V3ParamHandling", SlotOf(&TKXRunEdit::V3ParamHandling), 15},
                    Slot{"SetClientData", SlotOf(&TKXRunEdit::SetClientData), 16},
                    Slot{"GetDescriptionOfParams", SlotOf(DescribeGiven{&TKXRunEdit::GetDescription}), 17},
                    Slot{"Run", SlotOf(&TKXRunEdit::Run), 18},
                    Slot{"OnEditorTest", SlotOf(&TKXRunEdit::OnEditorTest), 19}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(HostInterfaces, SlotOrder,
                         testing::Values(Slot{"QueryInterface", SlotOf(&IKXUnknown::QueryInterface), 0},
                                         Slot{"AddRef", SlotOf(&IKXUnknown::AddRef), 1},
                                         Slot{"Release", SlotOf(&IKXUnknown::Release), 2},
                                         Slot{"CancelTest", SlotOf(&ITestEnvironment::CancelTest), 3},
                                         Slot{"GetVariable", SlotOf(&IVarAccess::GetVariable), 3},
                                         Slot{"AttachEdit", SlotOf(&IVarAccess::AttachEdit), 4}),
                         NameOf);

INSTANTIATE_TEST_SUITE_P(
    UserInterface, SlotOrder,
    testing::Values(Slot{"ProcessMessages", SlotOf(&UserInterface::ProcessMessages), 2},
                    Slot{"ShowMessage", SlotOf(&UserInterface::ShowMessage), 3},
                    Slot{"CreateProgressDialog", SlotOf(&UserInterface::CreateProgressDialog), 4},
                    Slot{"DisableTaskWindows", SlotOf(&UserInterface::DisableTaskWindows), 5},
                    Slot{"EnableTaskWindows", SlotOf(&UserInterface::EnableTaskWindows), 6}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(Help, SlotOrder,
                         testing::Values(Slot{"ShowTopic", SlotOf(&TKXHelpSystem::ShowTopic), 2},
                                         Slot{"Click", SlotOf(&TKXHelpButton::Click), 2}),
                         NameOf);

TEST(ModalResults, AreTheFrameworksNumbers) {
  EXPECT_EQ(mrNone, 0);
  EXPECT_EQ(mrOk, 1);
  EXPECT_EQ(mrCancel, 2);
  EXPECT_EQ(mrAbort, 3);
  EXPECT_EQ(mrIgnore, 5);
}

}  // namespace
