#include <gtest/gtest.h>

#include "bench/wiring/Contacts.h"
#include "tests/bench/RowName.h"

namespace kxbench::wiring {
namespace {

struct NamesRow {
  const char* name;
  std::map<std::int32_t, std::string> names;
  std::map<std::int32_t, std::string> contacts;  ///< "connector pin"
};

class NamesOfContacts : public testing::TestWithParam<NamesRow> {};

TEST_P(NamesOfContacts, AreSplitIntoConnectorAndPin) {
  std::map<std::int32_t, std::string> contacts;
  for (const auto& [channel, contact] : ContactsOf(GetParam().names)) {
    contacts[channel] = contact.connector + " " + contact.pin;
    EXPECT_EQ(contact.number.has_value(), contact.pin.find_first_not_of("0123456789") == std::string::npos);
  }
  EXPECT_EQ(contacts, GetParam().contacts);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, NamesOfContacts,
    testing::Values(
        NamesRow{
            "LastSeparator", {{1, "X1.A.1"}, {2, "X1.A.2"}, {3, "X1-3"}}, {{1, "X1.A 1"}, {2, "X1.A 2"}}},
        NamesRow{"EverySeparator",
                 {{1, "A.1"}, {2, "A-2"}, {3, "A:S"}, {4, "A/12"}},
                 {{1, "A 1"}, {2, "A 2"}, {3, "A S"}, {4, "A 12"}}},
        NamesRow{"NumberAfterLettersWhereSeparatorsDoNotTell",
                 {{1, "A1-L"}, {2, "A2-54g"}, {12, "A12"}, {14, "B1-L"}, {15, "B2"}},
                 {{1, "A 1"}, {2, "A 2"}, {12, "A 12"}, {14, "B 1"}, {15, "B 2"}}},
        NamesRow{"NamesThatStandAlone", {{1, "Motor"}, {2, "X1.1"}, {3, "Masse"}, {4, "12V"}}, {}},
        NamesRow{"SeparatorAtAnEnd", {{1, "A."}, {2, "A."}, {3, ".1"}, {4, ".2"}}, {}}),
    RowName<NamesRow>);

}  // namespace
}  // namespace kxbench::wiring
