#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>

/// Stands between programs and a server, and cuts a connection at a word that its program sends.
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

  bool HasCut();

 private:
  void Serve();
  void HandOn(int client);
  Cut CutOf(const std::string& bytes);

  int serverPort_;
  int port_ = 0;
  int listening_ = -1;
  std::mutex mutex_;
  std::string word_;
  Cut cut_ = Cut::Never;
  std::atomic<bool> stop_ = false;
  std::thread thread_;
};
