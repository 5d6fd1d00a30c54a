#pragma once

#include <csignal>
#include <sys/resource.h>

namespace larkspool {

// While it lives, no file of this process can be written beyond so many bytes.
class SmallDisk {
  public:
    explicit SmallDisk(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit small = {bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk() {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, SIG_DFL);
    }
    SmallDisk(const SmallDisk&) = delete;

  private:
    rlimit before = {};
};

} // namespace larkspool
