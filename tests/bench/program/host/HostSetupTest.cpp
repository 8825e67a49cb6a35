#include <gtest/gtest.h>

#include <cstdlib>

#include "bench/program/host/HostSetup.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"
#include "framework/kxextension.h"
#include "tests/bench/program/TemporaryFolder.h"

namespace kxbench {
namespace {

TEST(HostSetup, GivesTheThreeHostValues) {
  HostSetup host(CommonOptions{}, "");
  const TKXHashTable values = host.HostValues(0x10001);
  EXPECT_EQ(values.Get("AppParser"),
            reinterpret_cast<std::uintptr_t>(static_cast<TKXParser*>(&host.Parser())));
  EXPECT_EQ(values.Get("MsgHandle"), 0x10001U);
  reinterpret_cast<TBreInit>(values.Get("BreInit"))();
}

TEST(HostSetup, OffersTheGlobalInterfacesWhileItLives) {
  {
    HostSetup host(CommonOptions{}, "");
    ASSERT_NE(TestEnvironment(), nullptr);
    EXPECT_FALSE(host.TestState().Cancelled());
    TestEnvironment()->CancelTest();
    EXPECT_TRUE(host.TestState().Cancelled());
    host.Parser().GetEnvironment().SetVariable("KABEL", "12");
    EXPECT_EQ(TStringValue::GetVal(VarAccess()->GetVariable("kabel")), "12");
    EXPECT_EQ(VarAccess()->GetVariable("NIRGENDS"), nullptr);
  }
  EXPECT_EQ(TestEnvironment(), nullptr);
  EXPECT_EQ(VarAccess(), nullptr);
}

TEST(HostSetup, InterfacesAnswerForTheirOwnNameAndCountReferences) {
  HostSetup host(CommonOptions{}, "");
  void* found = nullptr;
  EXPECT_EQ(TestEnvironment()->QueryInterface("ITestEnvironment", &found), 0);
  EXPECT_EQ(found, static_cast<void*>(TestEnvironment()));
  EXPECT_EQ(TestEnvironment()->Release(), 1);
  EXPECT_NE(VarAccess()->QueryInterface("ITestEnvironment", &found), 0);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(VarAccess()->AddRef(), 2);
}

TEST(HostSetup, HandsTheDeviceOverByItsWholeName) {
  const TemporaryFolder folder;
  CommonOptions options;
  options.device = folder.Write("good.device", "");
  const HostSetup host(options, "");
  EXPECT_EQ(std::string(std::getenv("BRENMOR_DEVICE")), *options.device);
}

TEST(HostSetup, RefusesADeviceThatIsNoFile) {
  const TemporaryFolder folder;
  CommonOptions options;
  options.device = Utf8FromPath(folder.Path() / "missing.device");
  EXPECT_THROW(HostSetup(options, ""), Failure);
  options.device = Utf8FromPath(folder.Path());
  EXPECT_THROW(HostSetup(options, ""), Failure);
}

}  // namespace
}  // namespace kxbench
