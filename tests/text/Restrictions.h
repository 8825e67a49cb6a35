#pragma once

// Unix alone: what keeps a process from writing.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>

namespace text_test {

/// No file can grow beyond `bytes`: the write that would fails, as on a full disk.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(std::size_t bytes) : oldHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &old_);
    rlimit limit = old_;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &old_);
    std::signal(SIGXFSZ, oldHandler_);
  }

 private:
  rlimit old_{};
  void (*oldHandler_)(int);
};

/// Root may write everywhere; as somebody else the rights of files and folders count.
class AsNobody {
 public:
  AsNobody() { EXPECT_EQ(seteuid(wasRoot_ ? 65534 : geteuid()), 0); }
  ~AsNobody() { EXPECT_EQ(seteuid(wasRoot_ ? 0 : geteuid()), 0); }

 private:
  bool wasRoot_ = geteuid() == 0;
};

}  // namespace text_test
