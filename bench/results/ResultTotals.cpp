#include "bench/results/ResultTotals.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

#include "bench/results/ResultWriter.h"
#include "text/Utf8.h"

namespace kxbench::results {

namespace {

using soci::into;
using soci::use;

/// What changes in one row of day_totals.
struct DayChange {
  int checks = 0;
  int passes = 0;
  int fails = 0;
  int errors = 0;
  int cancels = 0;
  int devices = 0;
  int firstPasses = 0;
  int finalPasses = 0;
  double seconds = 0;
  double longest = 0;
};

/// By station and day, of one part.
using DayChanges = std::map<std::pair<std::string, std::string>, DayChange>;

/// A row of devices.
struct Device {
  std::string firstId;
  std::string firstStarted;
  std::string firstStation;
  std::string firstDay;
  int firstPass = 0;
  std::string lastId;
  std::string lastStarted;
  int lastPass = 0;
};

void Count(DayChanges& changes, const Device& device, int times) {
  DayChange& change = changes[{device.firstStation, device.firstDay}];
  change.devices += times;
  change.firstPasses += times * device.firstPass;
  change.finalPasses += times * device.lastPass;
}

Device DeviceOf(const Result& result) {
  const int pass = result.verdict == Verdict::Pass ? 1 : 0;
  const std::string started = TimeText(result.started);
  return {result.id, started, result.station, started.substr(0, 10), pass, result.id, started, pass};
}

/// Whether the device is new; its row is locked either way.
bool InsertDevice(soci::session& session, const Result& result, const Device& device) {
  soci::statement insert =
      (session.prepare << R"(
insert into devices (part, serial, first_id, first_started, first_station, first_day, first_pass, last_id,
  last_started, last_pass)
values (:part, :serial, :first_id, :first_started, :first_station, :first_day, :first_pass, :last_id,
  :last_started, :last_pass)
on conflict (part, serial) do nothing)",
       use(result.part), use(result.serial), use(device.firstId), use(device.firstStarted),
       use(device.firstStation), use(device.firstDay), use(device.firstPass), use(device.lastId),
       use(device.lastStarted), use(device.lastPass));
  insert.execute(true);
  if (insert.get_affected_rows() == 1) return true;
  session << "update devices set last_pass = last_pass where part = :part and serial = :serial",
      use(result.part), use(result.serial);
  return false;
}

/// Joins the test to what is known of its device, and counts what changed.
void AddTest(soci::session& session, const Result& result, DayChanges& changes) {
  const Device test = DeviceOf(result);
  if (result.serial.empty() || InsertDevice(session, result, test)) {
    Count(changes, test, 1);
    return;
  }
  Device device;
  session << R"(
select first_id, first_started, first_station, first_day, first_pass, last_id, last_started, last_pass
from devices where part = :part and serial = :serial)",
      use(result.part), use(result.serial), into(device.firstId), into(device.firstStarted),
      into(device.firstStation), into(device.firstDay), into(device.firstPass), into(device.lastId),
      into(device.lastStarted), into(device.lastPass);
  Count(changes, device, -1);
  if (std::tie(test.firstStarted, test.firstId) < std::tie(device.firstStarted, device.firstId)) {
    device.firstId = test.firstId;
    device.firstStarted = test.firstStarted;
    device.firstStation = test.firstStation;
    device.firstDay = test.firstDay;
    device.firstPass = test.firstPass;
  }
  if (std::tie(test.lastStarted, test.lastId) > std::tie(device.lastStarted, device.lastId)) {
    device.lastId = test.lastId;
    device.lastStarted = test.lastStarted;
    device.lastPass = test.lastPass;
  }
  Count(changes, device, 1);
  session << R"(
update devices set first_id = :first_id, first_started = :first_started, first_station = :first_station,
  first_day = :first_day, first_pass = :first_pass, last_id = :last_id, last_started = :last_started,
  last_pass = :last_pass
where part = :part and serial = :serial)",
      use(device.firstId), use(device.firstStarted), use(device.firstStation), use(device.firstDay),
      use(device.firstPass), use(device.lastId), use(device.lastStarted), use(device.lastPass),
      use(result.part), use(result.serial);
}

void WriteDays(soci::session& session, const std::string& part, const DayChanges& changes) {
  for (const auto& [key, change] : changes) {
    session << R"(
insert into day_totals (part, station, day, checks, passes, fails, errors, cancels, devices, first_passes,
  final_passes, seconds, longest)
values (:part, :station, :day, :checks, :passes, :fails, :errors, :cancels, :devices, :first_passes,
  :final_passes, :seconds, :longest)
on conflict (part, station, day) do update set
  checks = day_totals.checks + excluded.checks, passes = day_totals.passes + excluded.passes,
  fails = day_totals.fails + excluded.fails, errors = day_totals.errors + excluded.errors,
  cancels = day_totals.cancels + excluded.cancels, devices = day_totals.devices + excluded.devices,
  first_passes = day_totals.first_passes + excluded.first_passes,
  final_passes = day_totals.final_passes + excluded.final_passes,
  seconds = day_totals.seconds + excluded.seconds,
  longest = case when day_totals.longest < excluded.longest then excluded.longest else day_totals.longest end)",
        use(part), use(key.first), use(key.second), use(change.checks), use(change.passes), use(change.fails),
        use(change.errors), use(change.cancels), use(change.devices), use(change.firstPasses),
        use(change.finalPasses), use(change.seconds), use(change.longest);
  }
}

/// A text that may be a key: of a long one its beginning, and a number that stands for the whole (FNV-1a).
/// Beside part and station it has to fit into the 2700 bytes of an index' entry.
std::string Key(const std::string& text, std::size_t longest) {
  if (text.size() <= longest) return text;
  std::uint64_t hash = 14695981039346656037U;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
  std::size_t end = 0;
  while (end + shorttest::Utf8CharacterSize(std::string_view(text).substr(end)) <= longest) {
    end += shorttest::Utf8CharacterSize(std::string_view(text).substr(end));
  }
  return text.substr(0, end) + "#" + std::to_string(hash);
}

void CountFaults(soci::session& session, const Result& result, const std::string& day) {
  std::map<std::tuple<std::string, std::string>, const ResultFault*> faults;
  for (const ResultFault& fault : result.faults) faults[{fault.kind, ChannelsText(fault.channels)}] = &fault;
  for (const auto& [key, fault] : faults) {
    const auto& [kind, channels] = key;
    const std::string channelsKey = Key(channels, 400);
    const std::string kindKey = Key(kind, 100);
    session << R"(
insert into fault_totals (part, station, day, kind, channels_key, channels, text, checks)
values (:part, :station, :day, :kind, :channels_key, :channels, :text, 1)
on conflict (part, station, day, kind, channels_key) do update set checks = fault_totals.checks + 1)",
        use(result.part), use(result.station), use(day), use(kindKey), use(channelsKey), use(channels),
        use(fault->text);
  }
}

/// A fault of more channels, such as exchanged plugs, says nothing of a single contact.
constexpr std::size_t MostContacts = 16;

/// A device counts once for each contact and station, however often it is tested there.
void CountContacts(soci::session& session, const Result& result, const std::string& day) {
  std::set<int> channels;
  for (const ResultFault& fault : result.faults) {
    if (fault.channels.size() <= MostContacts) channels.insert(fault.channels.begin(), fault.channels.end());
  }
  if (channels.empty()) return;
  const std::string device = result.serial.empty() ? result.id : Key(result.serial, 400);
  int channel = 0;
  soci::statement insert = (session.prepare << R"(
insert into contact_devices (part, channel, station, device) values (:part, :channel, :station, :device)
on conflict (part, channel, station, device) do nothing)",
                            use(result.part), use(channel), use(result.station), use(device));
  soci::statement count = (session.prepare << R"(
insert into contact_totals (part, channel, station, day, devices) values (:part, :channel, :station, :day, 1)
on conflict (part, channel, station, day) do update set devices = contact_totals.devices + 1)",
                           use(result.part), use(channel), use(result.station), use(day));
  for (const int each : channels) {
    channel = each;
    insert.execute(true);
    if (insert.get_affected_rows() == 1) count.execute(true);
  }
}

}  // namespace

void AddToTotals(soci::session& session, const Result& result) {
  const std::string day = TimeText(result.started).substr(0, 10);
  DayChanges changes;
  if (result.verdict == Verdict::Pass || result.verdict == Verdict::Fail) AddTest(session, result, changes);
  DayChange& own = changes[{result.station, day}];
  own.checks = 1;
  own.passes = result.verdict == Verdict::Pass ? 1 : 0;
  own.fails = result.verdict == Verdict::Fail ? 1 : 0;
  own.errors = result.verdict == Verdict::Error ? 1 : 0;
  own.cancels = result.verdict == Verdict::Cancelled ? 1 : 0;
  own.seconds = result.seconds;
  own.longest = result.seconds;
  WriteDays(session, result.part, changes);
  CountFaults(session, result, day);
  CountContacts(session, result, day);
}

}  // namespace kxbench::results
