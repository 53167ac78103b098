#include "FrameClaim_cls.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sstream>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

std::string FrameClaim_cls::GetHostName() {
    char host[256] = {0};
    if (gethostname(host, sizeof host - 1) != 0)
        return "unknown";
    return host;
}

std::string FrameClaim_cls::GetStrOwnClaim() {
    return GetHostName() + " " + std::to_string(getpid()) + " " +
           std::to_string(static_cast<long long>(time(nullptr))) + "\n";
}

bool FrameClaim_cls::IsStale(const std::string& strClaim, const std::string& strHost, long long now,
                             double timeoutSeconds) {
    std::istringstream in(strClaim);
    std::string strClaimHost;
    long long pid = 0, stamp = 0;
    // A claim that cannot be read was cut short by a crash between creating and writing it: its
    // age decides.
    if (!(in >> strClaimHost >> pid >> stamp))
        return false;
    if (strClaimHost == strHost) {
        if (pid <= 0)
            return true;
        // Gone, or not ours to signal but alive (EPERM).
        return kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH;
    }
    return static_cast<double>(now - stamp) > timeoutSeconds;
}

FrameClaim_cls::Result_enum FrameClaim_cls::Claim(const std::string& strTarget, double timeoutSeconds,
                                                  std::string& strError) {
    const std::string strPath = GetClaimPath(strTarget);
    const std::string strOwn = GetStrOwnClaim();
    for (int attempt = 0; attempt < 2; ++attempt) {
        const int fd = open(strPath.c_str(), O_CREAT | O_EXCL | O_WRONLY, 0644);
        if (fd >= 0) {
            const bool bOk = write(fd, strOwn.data(), strOwn.size()) == static_cast<ssize_t>(strOwn.size());
            close(fd);
            if (!bOk) {
                unlink(strPath.c_str());
                strError = "cannot write " + strPath;
                return FAILED;
            }
            return attempt == 0 ? CLAIMED : TAKEN_OVER;
        }
        if (errno != EEXIST) {
            strError = "cannot create " + strPath + ": " + strerror(errno);
            return FAILED;
        }
        // Someone holds it: read who.
        std::string strClaim;
        const int fdRead = open(strPath.c_str(), O_RDONLY);
        if (fdRead >= 0) {
            char buf[512];
            const ssize_t n = read(fdRead, buf, sizeof buf - 1);
            close(fdRead);
            if (n > 0)
                strClaim.assign(buf, static_cast<size_t>(n));
        } else if (errno == ENOENT) {
            continue; // released meanwhile: try again
        }
        struct stat st;
        const long long now = static_cast<long long>(time(nullptr));
        bool bStale = IsStale(strClaim, GetHostName(), now, timeoutSeconds);
        // An empty or unreadable claim counts by the age of its file.
        if (strClaim.empty() && stat(strPath.c_str(), &st) == 0)
            bStale = static_cast<double>(now - st.st_mtime) > timeoutSeconds;
        if (!bStale)
            return HELD_BY_OTHER;
        // Two workers may both find it stale: only one unlink-and-create wins the O_EXCL.
        unlink(strPath.c_str());
    }
    return HELD_BY_OTHER;
}

void FrameClaim_cls::RemoveIfStale(const std::string& strTarget, double timeoutSeconds) {
    const std::string strPath = GetClaimPath(strTarget);
    const int fd = open(strPath.c_str(), O_RDONLY);
    if (fd < 0)
        return;
    char buf[512];
    const ssize_t n = read(fd, buf, sizeof buf - 1);
    close(fd);
    const std::string strClaim = n > 0 ? std::string(buf, static_cast<size_t>(n)) : std::string();
    if (IsStale(strClaim, GetHostName(), static_cast<long long>(time(nullptr)), timeoutSeconds))
        unlink(strPath.c_str());
}

void FrameClaim_cls::Release(const std::string& strTarget) {
    unlink(GetClaimPath(strTarget).c_str());
}
