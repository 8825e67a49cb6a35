#pragma once

#include <atomic>
#include <string>
#include <thread>

/// Stands between a program and a server, and cuts the connection at a word that the program sends.
class CuttingProxy {
 public:
  enum class Cut {
    Never,
    Before,  ///< the word does not reach the server
    After    ///< it does, and the answer does not come back
  };

  /// Hands on connections to `port` of 127.0.0.1.
  explicit CuttingProxy(int port);
  ~CuttingProxy();
  CuttingProxy(const CuttingProxy&) = delete;
  CuttingProxy& operator=(const CuttingProxy&) = delete;

  int Port() const { return port_; }

  /// Cuts the next connection that sends `word`; once.
  void CutAt(const std::string& word, Cut cut);

  bool HasCut() const { return cut_ == Cut::Never; }

 private:
  void Serve();
  void HandOn(int client);

  int serverPort_;
  int port_ = 0;
  int listening_ = -1;
  std::string word_;
  std::atomic<Cut> cut_ = Cut::Never;
  std::atomic<bool> stop_ = false;
  std::thread thread_;
};
