#pragma once

#include <sys/resource.h>

#include <csignal>

/// While this lives no file can grow further in this process and its children, as on a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t largestFile) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit small{largestFile, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }

    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_onLimit);
    }

    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before = {};
    void (*m_onLimit)(int) = std::signal(SIGXFSZ, SIG_IGN);
};
