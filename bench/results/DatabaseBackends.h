#pragma once

#include <soci/soci.h>

#include <chrono>
#include <optional>
#include <string>

#include "bench/results/StoreUrl.h"

namespace kxbench::results {

/// Opens a file of SQLite, in a way that survives a power cut. The factory outlives the session.
const soci::backend_factory& SqliteFiles();

/// What SqliteFiles takes as its connection: the name of the file, UTF-8, after "w" (write), "c" (make it
/// where it does not exist, too), and the milliseconds to wait for another program's lock: "w2000
/// /data/results.db".
std::string SqliteConnection(const StoreUrl& url, bool make,
                             std::optional<std::chrono::milliseconds> patience);

/// Connects to a server. Where the program is built without PostgreSQL, the session cannot be made.
const soci::backend_factory& PostgresqlServers();

/// What PostgresqlServers takes.
std::string PostgresqlConnection(const StoreUrl& url, std::optional<std::chrono::milliseconds> patience);

/// A second descriptor of the socket of a session of PostgresqlServers; -1 where there is none.
int SecondSocket(soci::session& session);

/// Ends the connection of a socket got from SecondSocket, so that whoever waits for it wakes up; closes it.
void ShutDownSocket(int socket);
void CloseSocket(int socket);

}  // namespace kxbench::results
