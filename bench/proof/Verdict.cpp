#include "bench/proof/Verdict.h"

#include <algorithm>
#include <array>
#include <locale>
#include <sstream>

#include "bench/proof/NumberWords.h"

namespace kxbench::proof {

namespace {

struct ReasonName {
  EscapeReason reason;
  const char* word;
  const char* remedy;
};

constexpr std::array<ReasonName, std::size(AllReasons)> ReasonNames = {
    {{EscapeReason::Excluded, "excluded",
      "take the pair off the list of excluded connections, or test it with an expectation of its own"},
     {EscapeReason::Unknown, "unknown",
      "say of the pair whether it is connected: learn the harness again; or enter one of the texts on the "
      "editor's page Text, leave it, and save"},
     {EscapeReason::Suspended, "suspended",
      "take the channel off the list of suspended channels once it carries no voltage"},
     {EscapeReason::NotInExpectation, "not-in-expectation", "extend START and ENDE to the channel"},
     {EscapeReason::Threshold, "threshold", "move the threshold"},
     {EscapeReason::ErrorLimit, "error-limit", "set MAX ERROR higher"},
     {EscapeReason::VoltageControlOff, "voltage-control-off", "set U_KONTROLLE to 2"},
     {EscapeReason::Limits, "limits", "test it by other means"}}};

struct LimitRemedy {
  const char* limit;
  const char* remedy;
};

constexpr std::array<LimitRemedy, 5> LimitRemedies = {
    {{PositiveFirstLimit, "put a contact that never carries a voltage, such as ground, on the first channel"},
     {NegativeLimit, "measure negative voltages by other means, or let the range end with a ground contact"},
     {FarEndLimit, "set the upper threshold above the resistance of the nets concerned"},
     {NeverClosesLimit, "test the tester's relays on an empty fixture with kxbench selftest"},
     {NeverOpensLimit, "test the tester's relays on an empty fixture with kxbench selftest"}}};

const ReasonName& NameOf(EscapeReason reason) {
  return *std::find_if(ReasonNames.begin(), ReasonNames.end(),
                       [&](const ReasonName& candidate) { return candidate.reason == reason; });
}

constexpr const char* Nothing = "-";

}  // namespace

std::string ReasonWord(EscapeReason reason) { return NameOf(reason).word; }

std::optional<EscapeReason> ReasonFromWord(std::string_view word) {
  const auto* const name = std::find_if(ReasonNames.begin(), ReasonNames.end(),
                                        [&](const ReasonName& candidate) { return candidate.word == word; });
  return name == ReasonNames.end() ? std::nullopt : std::optional(name->reason);
}

std::string RemedyFor(const Escape& escape) {
  if (escape.reason == EscapeReason::Threshold && escape.ohm) {
    return "move the threshold: found once the fault has " + OhmWord(*escape.ohm, 3);
  }
  const auto* const limit =
      std::find_if(LimitRemedies.begin(), LimitRemedies.end(),
                   [&](const LimitRemedy& candidate) { return escape.limit == candidate.limit; });
  return limit == LimitRemedies.end() ? NameOf(escape.reason).remedy : limit->remedy;
}

std::string NamingText(Naming naming) {
  switch (naming) {
    case Naming::Exactly:
      return "exactly";
    case Naming::AmongEquals:
      return "among equals";
    case Naming::Wrongly:
      return "wrongly";
    case Naming::NotAsked:
      break;
  }
  return "";
}

std::string VerdictWords(const Verdict& verdict) {
  std::ostringstream words;
  words.imbue(std::locale::classic());
  words.precision(17);
  words << verdict.found << ' ' << verdict.namesChannels << ' ' << static_cast<int>(verdict.naming) << ' '
        << verdict.seconds << ' ';
  if (verdict.escape) {
    words << ReasonWord(verdict.escape->reason) << ' ' << verdict.escape->ohm.value_or(-1) << ' '
          << (verdict.escape->limit.empty() ? Nothing : verdict.escape->limit);
  } else {
    words << Nothing << " -1 " << Nothing;
  }
  return words.str();
}

std::optional<Verdict> VerdictFromWords(const std::string& words) {
  std::istringstream reader(words);
  reader.imbue(std::locale::classic());
  Verdict verdict;
  int naming = 0;
  std::string reason;
  double ohm = 0;
  std::string limit;
  reader >> verdict.found >> verdict.namesChannels >> naming >> verdict.seconds >> reason >> ohm >> limit;
  if (!reader || naming < 0 || naming > static_cast<int>(Naming::NotAsked)) return std::nullopt;
  verdict.naming = static_cast<Naming>(naming);
  if (reason == Nothing) return verdict;
  const auto known = ReasonFromWord(reason);
  if (!known) return std::nullopt;
  verdict.escape = Escape{*known, ohm < 0 ? std::nullopt : std::optional(ohm), limit == Nothing ? "" : limit};
  return verdict;
}

}  // namespace kxbench::proof
