#include "tests/bench/results/PostgresServer.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <grp.h>
#include <libpq-fe.h>
#include <netinet/in.h>
#include <pwd.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <random>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "bench/results/Database.h"

namespace {

using kxbench::results::Database;

struct Administration : Database {
  explicit Administration(const std::string& url)
      : Database(kxbench::results::ReadStoreUrl(url), std::nullopt, Missing::Refuse) {}
};

const std::string Programs = POSTGRESQL_PROGRAMS;

/// The server refuses to run as root.
void BecomeSomebody() {
  if (geteuid() != 0) return;
  const passwd* const nobody = getpwnam("nobody");
  if (nobody == nullptr || setgroups(0, nullptr) != 0 || setgid(nobody->pw_gid) != 0 ||
      setuid(nobody->pw_uid) != 0) {
    _exit(126);
  }
}

pid_t StartProgram(const std::string& folder, std::vector<std::string> words) {
  const pid_t child = fork();
  if (child != 0) return child;
  if (chdir(folder.c_str()) != 0) _exit(126);
  const int log = open("log", O_WRONLY | O_CREAT | O_APPEND, 0666);
  BecomeSomebody();
  prctl(PR_SET_PDEATHSIG, SIGQUIT);  // past the change of user, which would take it back
  const int nothing = open("/dev/null", O_RDONLY);
  dup2(nothing, STDIN_FILENO);
  dup2(log, STDOUT_FILENO);
  dup2(log, STDERR_FILENO);
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  execv(argv[0], argv.data());
  _exit(127);
}

std::string LogOf(const std::filesystem::path& folder) {
  std::ifstream log(folder / "log");
  return {std::istreambuf_iterator<char>(log), std::istreambuf_iterator<char>()};
}

}  // namespace

int FreePort() {
  const int descriptor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  if (bind(descriptor, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
      getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    throw std::system_error(errno, std::generic_category(), "no free port");
  }
  close(descriptor);
  return ntohs(address.sin_port);
}

PostgresServer& PostgresServer::Get() {
  static PostgresServer server;
  return server;
}

PostgresServer::PostgresServer() {
  folder_ =
      std::filesystem::temp_directory_path() / ("kxbench-postgres-" + std::to_string(std::random_device{}()));
  std::filesystem::create_directories(folder_);
  std::filesystem::permissions(folder_, std::filesystem::perms::all);
  const std::string data = (folder_ / "data").string();
  const pid_t initdb = StartProgram(folder_.string(), {Programs + "/initdb", "-D", data, "-U", "kx", "-A",
                                                       "trust", "-E", "UTF8", "--no-locale", "--no-sync"});
  int status = 0;
  waitpid(initdb, &status, 0);
  if (status != 0) throw std::runtime_error("initdb failed:\n" + LogOf(folder_));
  std::ofstream(data + "/pg_hba.conf") << "host all guarded 127.0.0.1/32 scram-sha-256\n"
                                          "host all all 127.0.0.1/32 trust\n";
  port_ = FreePort();
  Start();
  Administration administration(Url("postgres", port_, "kx"));
  soci::session& session = administration.Session();
  session << "create role guarded login password 'very%secret' in role pg_read_all_data";
  session << "create role station login";
}

PostgresServer::~PostgresServer() {
  Stop();
  std::error_code error;
  std::filesystem::remove_all(folder_, error);
}

std::string PostgresServer::Url(const std::string& database, int port, const std::string& user) const {
  return "postgresql://" + user + "@127.0.0.1:" + std::to_string(port) + "/" + database;
}

std::string PostgresServer::NewDatabase() {
  const std::string name = "results" + std::to_string(++databases_);
  Administration administration(Url("postgres", port_, "kx"));
  soci::session& session = administration.Session();
  session << "create database " << name;
  return Url(name, port_, "kx");
}

void PostgresServer::Start() {
  postmaster_ =
      StartProgram(folder_.string(),
                   {Programs + "/postgres", "-D", (folder_ / "data").string(), "-p", std::to_string(port_),
                    "-c", "listen_addresses=127.0.0.1", "-c", "unix_socket_directories=", "-c", "fsync=off",
                    "-c", "shared_buffers=32MB", "-c", "max_connections=40", "-c", "autovacuum=off"});
  const std::string url = Url("postgres", port_, "kx");
  for (const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);;) {
    if (PQping(url.c_str()) == PQPING_OK) return;
    if (std::chrono::steady_clock::now() > deadline || waitpid(postmaster_, nullptr, WNOHANG) != 0) {
      throw std::runtime_error("the server does not start:\n" + LogOf(folder_));
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

void PostgresServer::Stop() {
  if (postmaster_ < 0) return;
  kill(postmaster_, SIGQUIT);
  waitpid(postmaster_, nullptr, 0);
  postmaster_ = -1;
}

void PostgresServer::Pause() { SignalAll(SIGSTOP); }

void PostgresServer::Resume() { SignalAll(SIGCONT); }

void PostgresServer::SignalAll(int signal) const {
  kill(postmaster_, signal);  // first, so that there are no new ones
  std::ifstream children("/proc/" + std::to_string(postmaster_) + "/task/" + std::to_string(postmaster_) +
                         "/children");
  for (pid_t child = 0; children >> child;) kill(child, signal);
}
