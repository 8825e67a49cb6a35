#include "bench/results/SummaryQueries.h"

#include <algorithm>
#include <map>
#include <utility>

namespace kxbench::results {

namespace {

using soci::into;
using soci::use;

/// The conditions that every query of the summary shares: constant text, bound values.
struct Condition {
  explicit Condition(const ResultFilter& filter)
      : from(filter.from.substr(0, 10)),
        to(filter.to.empty() ? "9999-99-99" : filter.to.substr(0, 10)),
        part(filter.part.value_or("")),
        station(filter.station.value_or("")),
        parted(filter.part.has_value()),
        stationed(filter.station.has_value()) {}

  std::string Text() const {
    return std::string(" where day >= :from and day <= :to") + (parted ? " and part = :part" : "") +
           (stationed ? " and station = :station" : "");
  }
  void Bind(soci::statement& statement) {
    statement.exchange(use(from));
    statement.exchange(use(to));
    if (parted) statement.exchange(use(part));
    if (stationed) statement.exchange(use(station));
  }

  std::string from;
  std::string to;
  std::string part;
  std::string station;
  bool parted;
  bool stationed;
};

void Start(soci::statement& statement, const std::string& query) {
  statement.alloc();
  statement.prepare(query);
  statement.define_and_bind();
  statement.execute();
}

constexpr char Sums[] =
    "cast(sum(checks) as bigint), cast(sum(passes) as bigint), cast(sum(fails) as bigint), "
    "cast(sum(errors) as bigint), cast(sum(cancels) as bigint), cast(sum(devices) as bigint), "
    "cast(sum(first_passes) as bigint), cast(sum(final_passes) as bigint), sum(seconds), max(longest)";

/// `column` is one of ours.
std::vector<Total> TotalsBy(soci::session& session, Condition condition, const std::string& column) {
  std::vector<Total> totals;
  Total total;
  long long counts[8] = {};
  soci::statement select(session);
  select.exchange(into(total.name));
  for (long long& count : counts) select.exchange(into(count));
  select.exchange(into(total.seconds));
  select.exchange(into(total.longest));
  condition.Bind(select);
  Start(select, "select " + column + ", " + Sums + " from day_totals" + condition.Text() + " group by " +
                    column + " order by " + column);
  while (select.fetch()) {
    total.checks = counts[0];
    total.passes = counts[1];
    total.fails = counts[2];
    total.errors = counts[3];
    total.cancels = counts[4];
    total.devices = counts[5];
    total.firstPasses = counts[6];
    total.finalPasses = counts[7];
    totals.push_back(total);
  }
  return totals;
}

Total Sum(const std::vector<Total>& totals) {
  Total sum;
  for (const Total& total : totals) {
    sum.checks += total.checks;
    sum.passes += total.passes;
    sum.fails += total.fails;
    sum.errors += total.errors;
    sum.cancels += total.cancels;
    sum.devices += total.devices;
    sum.firstPasses += total.firstPasses;
    sum.finalPasses += total.finalPasses;
    sum.seconds += total.seconds;
    sum.longest = std::max(sum.longest, total.longest);
  }
  return sum;
}

void QueryFaults(soci::session& session, Condition condition, ResultSummary& summary) {
  FaultCount fault;
  long long checks = 0;
  soci::statement select(session);
  for (std::string* text : {&fault.part, &fault.kind, &fault.channels, &fault.text})
    select.exchange(into(*text));
  select.exchange(into(checks));
  condition.Bind(select);
  Start(select,
        "select part, kind, min(channels), min(text), cast(sum(checks) as bigint) from fault_totals" +
            condition.Text() +
            " group by part, kind, channels_key order by sum(checks) desc, part, kind, min(channels)");
  while (select.fetch()) {
    fault.checks = checks;
    summary.faultsInAll += checks;
    if (summary.faults.size() < MostListedFaults) summary.faults.push_back(fault);
  }
}

/// Of one part: how many devices each station tested first.
using Tested = std::map<std::string, std::map<std::string, std::int64_t>>;

Tested QueryTested(soci::session& session, Condition condition) {
  Tested tested;
  std::string part;
  std::string station;
  long long devices = 0;
  soci::statement select(session);
  select.exchange(into(part));
  select.exchange(into(station));
  select.exchange(into(devices));
  condition.Bind(select);
  Start(select, "select part, station, cast(sum(devices) as bigint) from day_totals" + condition.Text() +
                    " group by part, station");
  while (select.fetch()) tested[part][station] = devices;
  return tested;
}

/// A contact comes back on one station and not on others when at least three devices had a fault there, when
/// the other stations would have seen at least three by the same rate, and saw at most a fifth of what that
/// rate leads to expect.
bool IsSuspect(const SuspectContact& contact) {
  constexpr std::int64_t Fewest = 3;
  constexpr double Share = 0.2;
  if (contact.devices < Fewest || contact.tested <= 0 || contact.testedOthers <= 0) return false;
  const double rate = static_cast<double>(contact.devices) / static_cast<double>(contact.tested);
  const double expected = std::min(rate, 1.0) * static_cast<double>(contact.testedOthers);
  return expected >= static_cast<double>(Fewest) &&
         static_cast<double>(contact.devicesOthers) <= Share * expected;
}

/// Looks at all stations, whichever the filter names: a contact is compared with the others.
void QuerySuspects(soci::session& session, const ResultFilter& filter, ResultSummary& summary) {
  ResultFilter everywhere = filter;
  everywhere.station.reset();
  const Tested tested = QueryTested(session, Condition(everywhere));
  Condition condition(everywhere);
  std::map<std::pair<std::string, int>, std::map<std::string, std::int64_t>> found;
  std::string part;
  std::string station;
  int channel = 0;
  long long devices = 0;
  soci::statement select(session);
  select.exchange(into(part));
  select.exchange(into(channel));
  select.exchange(into(station));
  select.exchange(into(devices));
  condition.Bind(select);
  Start(select, "select part, channel, station, cast(sum(devices) as bigint) from contact_totals" +
                    condition.Text() + " group by part, channel, station");
  while (select.fetch()) found[{part, channel}][station] = devices;

  for (const auto& [contact, stations] : found) {
    const auto testedHere = tested.find(contact.first);
    if (testedHere == tested.end()) continue;
    std::int64_t allDevices = 0;
    std::int64_t allTested = 0;
    for (const auto& [name, count] : stations) allDevices += count;
    for (const auto& [name, count] : testedHere->second) allTested += count;
    for (const auto& [name, count] : stations) {
      if (filter.station && name != *filter.station) continue;
      const auto here = testedHere->second.find(name);
      const std::int64_t testedAtName = here == testedHere->second.end() ? 0 : here->second;
      const SuspectContact suspect = {
          contact.first,           name, contact.second, count, testedAtName, allDevices - count,
          allTested - testedAtName};
      if (IsSuspect(suspect)) summary.suspects.push_back(suspect);
    }
  }
  std::stable_sort(summary.suspects.begin(), summary.suspects.end(),
                   [](const SuspectContact& a, const SuspectContact& b) { return a.devices > b.devices; });
  if (summary.suspects.size() > MostListedSuspects) summary.suspects.resize(MostListedSuspects);
}

}  // namespace

ResultSummary QuerySummary(soci::session& session, const ResultFilter& filter) {
  ResultSummary summary;
  const Condition condition(filter);
  summary.parts = TotalsBy(session, condition, "part");
  summary.stations = TotalsBy(session, condition, "station");
  summary.days = TotalsBy(session, condition, "day");
  summary.all = Sum(summary.parts);
  QueryFaults(session, condition, summary);
  QuerySuspects(session, filter, summary);
  return summary;
}

}  // namespace kxbench::results
