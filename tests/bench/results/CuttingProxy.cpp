#include "tests/bench/results/CuttingProxy.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

sockaddr_in LocalAddress(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  return address;
}

bool SendAll(int to, const std::string& bytes) {
  for (std::size_t done = 0; done < bytes.size();) {
    const ssize_t sent = send(to, bytes.data() + done, bytes.size() - done, MSG_NOSIGNAL);
    if (sent <= 0) return false;
    done += static_cast<std::size_t>(sent);
  }
  return true;
}

}  // namespace

CuttingProxy::CuttingProxy(int port) : serverPort_(port) {
  listening_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = LocalAddress(0);
  socklen_t size = sizeof address;
  if (bind(listening_, reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(listening_, 8) != 0 ||
      getsockname(listening_, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    throw std::runtime_error("the proxy cannot listen");
  }
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Serve(); });
}

CuttingProxy::~CuttingProxy() {
  stop_ = true;
  thread_.join();
  close(listening_);
}

void CuttingProxy::CutAt(const std::string& word, Cut cut) {
  const std::lock_guard lock(mutex_);
  word_ = word;
  cut_ = cut;
}

bool CuttingProxy::HasCut() {
  const std::lock_guard lock(mutex_);
  return cut_ == Cut::Never;
}

/// Where to cut what sends these bytes; once.
CuttingProxy::Cut CuttingProxy::CutOf(const std::string& bytes) {
  const std::lock_guard lock(mutex_);
  if (cut_ == Cut::Never || bytes.find(word_) == std::string::npos) return Cut::Never;
  return std::exchange(cut_, Cut::Never);
}

void CuttingProxy::Serve() {
  std::vector<std::thread> connections;
  while (!stop_) {
    pollfd waiting = {listening_, POLLIN, 0};
    if (poll(&waiting, 1, 10) <= 0) continue;
    const int client = accept(listening_, nullptr, nullptr);
    connections.emplace_back([this, client] {
      HandOn(client);
      close(client);
    });
  }
  for (std::thread& connection : connections) connection.join();
}

void CuttingProxy::HandOn(int client) {
  const int server = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = LocalAddress(serverPort_);
  bool open = connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  bool silent = false;  // nothing goes back to the client any more
  while (open && !stop_) {
    std::array<pollfd, 2> ends = {{{client, POLLIN, 0}, {server, POLLIN, 0}}};
    if (poll(ends.data(), ends.size(), 10) <= 0) continue;
    for (const pollfd& end : ends) {
      if (end.revents == 0) continue;
      std::array<char, 65536> buffer{};
      const ssize_t count = recv(end.fd, buffer.data(), buffer.size(), 0);
      if (count <= 0) {
        open = false;
        break;
      }
      const std::string bytes(buffer.data(), static_cast<std::size_t>(count));
      const bool fromClient = end.fd == client;
      if (!fromClient && silent) {  // the server has answered what the client will not hear
        open = false;
        break;
      }
      const Cut cut = fromClient ? CutOf(bytes) : Cut::Never;
      silent = silent || cut == Cut::After;
      open = cut != Cut::Before;
      if (!open) break;
      open = SendAll(fromClient ? server : client, bytes);
    }
  }
  close(server);
}
