#include "bench/results/EarlierChecks.h"

namespace kxbench::results {

using soci::into;
using soci::use;

std::vector<ResultStore::EarlierCheck> ReadEarlierChecks(Database& database, const std::string& serial,
                                                         std::size_t most) {
  std::vector<ResultStore::EarlierCheck> checks;
  database.Read([&] {
    soci::session& session = database.Session();
    const int limit = static_cast<int>(most);
    std::string id;
    std::string started;
    std::string verdict;
    soci::statement select = (session.prepare << R"(
select id, started, verdict from stored_results where serial = :serial order by started desc, id desc limit :most)",
                              use(serial), use(limit), into(id), into(started), into(verdict));
    select.execute();
    while (select.fetch()) checks.push_back({id, started, VerdictOf(verdict).value_or(Verdict::Error), {}});

    std::string text;
    soci::statement faults =
        (session.prepare << "select text from stored_faults where result_id = :id order by number", use(id),
         into(text));
    for (ResultStore::EarlierCheck& check : checks) {
      id = check.id;
      faults.execute();
      while (faults.fetch()) check.faults.push_back(text);
    }
  });
  return checks;
}

}  // namespace kxbench::results
