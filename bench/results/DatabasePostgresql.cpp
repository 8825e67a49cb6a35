#include <fcntl.h>
#include <soci/postgresql/soci-postgresql.h>
#include <soci/soci.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

#include "bench/results/DatabaseBackends.h"

namespace kxbench::results {

namespace {

class PostgresqlSession : public soci::postgresql_session_backend {
 public:
  explicit PostgresqlSession(const soci::connection_parameters& parameters)
      : postgresql_session_backend(parameters, false) {
    // The server's notices would go to standard error.
    PQsetNoticeProcessor(
        conn_, [](void*, const char*) {}, nullptr);
  }
};

class PostgresqlFactory : public soci::backend_factory {
 public:
  PostgresqlSession* make_session(const soci::connection_parameters& parameters) const override {
    return new PostgresqlSession(parameters);
  }
};

}  // namespace

const soci::backend_factory& PostgresqlServers() {
  static const PostgresqlFactory factory;
  return factory;
}

std::string PostgresqlConnection(const StoreUrl& url, std::optional<std::chrono::milliseconds> patience) {
  // Of a parameter that is given twice the last counts. Two seconds are the shortest that the library knows.
  const bool parameters = url.connection.find('?', url.connection.rfind('@') + 1) != std::string::npos;
  return url.connection + (parameters ? "&" : "?") +
         "client_encoding=UTF8&fallback_application_name=kxbench" + (patience ? "&connect_timeout=2" : "");
}

void CheckServerUrl(const StoreUrl& url) {
  if (url.kind != StoreUrl::Kind::Postgresql) return;
  char* reason = nullptr;
  PQconninfoOption* const options = PQconninfoParse(PostgresqlConnection(url, std::nullopt).c_str(), &reason);
  const std::string failure = reason == nullptr ? "" : reason;
  PQconninfoFree(options);
  PQfreemem(reason);
  if (options == nullptr) throw std::runtime_error(url.shown + ": " + WithoutSecrets(failure, url));
}

int SecondSocket(soci::session& session) {
  const auto* const backend = dynamic_cast<soci::postgresql_session_backend*>(session.get_backend());
  return backend == nullptr ? -1 : fcntl(PQsocket(backend->conn_), F_DUPFD_CLOEXEC, 0);
}

void ShutDownSocket(int socket) { shutdown(socket, SHUT_RDWR); }

void CloseSocket(int socket) { close(socket); }

}  // namespace kxbench::results
