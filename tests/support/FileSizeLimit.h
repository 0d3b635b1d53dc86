#pragma once

#include <csignal>

#include <sys/resource.h>

namespace corvanta::test {

/// Lets files grow to a number of bytes only, for the life of the object.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) : m_formerHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit limit{bytes, m_former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    FileSizeLimit(FileSizeLimit&&) = delete;
    FileSizeLimit& operator=(FileSizeLimit&&) = delete;
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_formerHandler);
    }

  private:
    rlimit m_former{};
    void (*m_formerHandler)(int);
};

} // namespace corvanta::test
