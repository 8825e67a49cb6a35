#include <stdexcept>

#include "bench/results/DatabaseBackends.h"

namespace kxbench::results {

namespace {

class NoServers : public soci::backend_factory {
 public:
  soci::details::session_backend* make_session(const soci::connection_parameters&) const override {
    throw std::runtime_error("this program is built without PostgreSQL");
  }
};

}  // namespace

const soci::backend_factory& PostgresqlServers() {
  static const NoServers factory;
  return factory;
}

std::string PostgresqlConnection(const StoreUrl& url, std::optional<std::chrono::milliseconds>) {
  return url.connection;
}

void CheckServerUrl(const StoreUrl&) {}

int SecondSocket(soci::session&) { return -1; }
void ShutDownSocket(int) {}
void CloseSocket(int) {}

}  // namespace kxbench::results
