// The plug-in's entry and what it tells the host.
#include "simulator/SimulatedTester.h"
#include "tests/plugin/entry/LoadedPlugin.h"

namespace shorttest::testkit {
namespace {

class ExtensionEntry : public PluginTest {};

TEST_F(ExtensionEntry, DescribesTheExtension) {
  const TExtensionInfo& info = Register();
  EXPECT_EQ(info.Name, "Kurzschlusstest");
  EXPECT_EQ(info.Description, "Verbindungstest und Kurschlusstest");
  EXPECT_EQ(info.CommandDefinitionFile, "Data\\ShortTestCommands.def");
  ASSERT_EQ(info.Commands.size(), 1U);
}

TEST_F(ExtensionEntry, ExportsTheOneCommandClassWithTheHostsParser) {
  const TExtensionInfo& info = Register();
  ASSERT_EQ(info.Commands.size(), 1U);
  EXPECT_EQ(info.Commands[0]->CommandClass().ClassName(), "TKXShortTestCommand");
  EXPECT_EQ(info.Commands[0]->Parser(), &parser);
  EXPECT_EQ(info.Commands[0]->Flags(), 1U);
}

TEST_F(ExtensionEntry, RunsNothingAtLoadTimeNorAtRegistration) {
  Register();
  EXPECT_EQ(brenmor_sim_call_count(), 0);
  EXPECT_EQ(initCalls, 0);
  EXPECT_EQ(log.Text(), "");
  EXPECT_TRUE(records.empty());
}

TEST_F(ExtensionEntry, DoesNotMissKeysThatAreAbsent) {
  hostValues = TKXHashTable();
  const TExtensionInfo& info = Register();
  EXPECT_EQ(info.Name, "Kurzschlusstest");
  ASSERT_EQ(info.Commands.size(), 1U);
  EXPECT_EQ(info.Commands[0]->Parser(), nullptr);
}

TEST_F(ExtensionEntry, ReadsItsThreeKeysAlone) {
  hostValues.Put("appparser", 1);
  hostValues.Put("Msghandle", 2);
  hostValues.Put("BREINIT", 3);
  const TExtensionInfo& info = Register();
  EXPECT_EQ(info.Commands.at(0)->Parser(), &parser);
  Run(*MakeCommand(), ExpectationFile("good.ini", true));
  EXPECT_EQ(initCalls, 1);
  EXPECT_EQ(records.size(), 2U);
}

#if UINTPTR_MAX > 0xFFFFFFFFU
TEST_F(ExtensionEntry, DropsTheUpperHalfOfTheWindowHandle) {
  const auto handle = reinterpret_cast<std::uintptr_t>(window.Handle());
  hostValues.Put("MsgHandle", handle | std::uintptr_t{0xDEADBEEF} << 32U);
  Run(*MakeCommand(), ExpectationFile("good.ini", true));
  EXPECT_EQ(records.size(), 2U);
}
#endif

}  // namespace
}  // namespace shorttest::testkit
