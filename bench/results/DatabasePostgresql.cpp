#include <fcntl.h>
#include <soci/postgresql/soci-postgresql.h>
#include <soci/soci.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <stdexcept>
#include <string>

#include "bench/results/DatabaseBackends.h"

namespace kxbench::results {

namespace {

class PostgresqlFactory : public soci::backend_factory {
 public:
  soci::details::session_backend* make_session(const soci::connection_parameters& parameters) const override {
    // The library lets its classes be used through their bases alone.
    const soci::backend_factory& library = *soci::factory_postgresql();
    soci::details::session_backend* const session =
        library.make_session(soci::connection_parameters(library, parameters.get_connect_string()));
    // The server's notices would go to standard error.
    PQsetNoticeProcessor(
        static_cast<soci::postgresql_session_backend*>(session)->conn_, [](void*, const char*) {}, nullptr);
    return session;
  }
};

/// SOCI splits the text at blanks, and takes quotes away.
std::string WithoutBlanks(const std::string& url) {
  std::string text;
  for (const char c : url) {
    char escaped[4] = {c};
    if (c == ' ' || c == '\'' || c == '"' || c == '\t' || c == '\n' || c == '\r') {
      std::snprintf(escaped, sizeof escaped, "%%%02X", static_cast<unsigned>(c));
    }
    text += escaped;
  }
  return text;
}

}  // namespace

const soci::backend_factory& PostgresqlServers() {
  static const PostgresqlFactory factory;
  return factory;
}

std::string PostgresqlConnection(const StoreUrl& url, std::optional<std::chrono::milliseconds> patience) {
  // Of a parameter that is given twice the last counts. Two seconds are the shortest that the library knows.
  const bool parameters = url.connection.find('?', url.connection.rfind('@') + 1) != std::string::npos;
  return WithoutBlanks(url.connection) + (parameters ? "&" : "?") +
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
  const auto* const backend = static_cast<soci::postgresql_session_backend*>(session.get_backend());
  return fcntl(PQsocket(backend->conn_), F_DUPFD_CLOEXEC, 0);
}

void ShutDownSocket(int socket) { shutdown(socket, SHUT_RDWR); }

void CloseSocket(int socket) { close(socket); }

}  // namespace kxbench::results
