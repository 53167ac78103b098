// Claims of frames among workers that share an output folder: a worker owns a frame while the
// file "TARGET.claim", made with O_CREAT|O_EXCL, holds its host, process id and start time. A
// claim is stale, and is taken over, when its process is gone on this host, or when it is older
// than the timeout and comes from another host. Any thread; one claim object per frame.
#pragma once

#include <string>

class FrameClaim_cls {
public:
    enum Result_enum { CLAIMED, TAKEN_OVER, HELD_BY_OTHER, FAILED };

    // Tries to claim the target; on CLAIMED and TAKEN_OVER the claim file is ours.
    static Result_enum Claim(const std::string& strTarget, double timeoutSeconds, std::string& strError);
    // Removes a claim of the target that is stale (a file finished just before its worker died).
    static void RemoveIfStale(const std::string& strTarget, double timeoutSeconds);
    // Removes our claim of the target.
    static void Release(const std::string& strTarget);
    static std::string GetClaimPath(const std::string& strTarget) { return strTarget + ".claim"; }
    // The claim text of this process: "host pid time\n".
    static std::string GetStrOwnClaim();
    // Whether a claim with this text is stale for this host at time now (seconds since the epoch).
    static bool IsStale(const std::string& strClaim, const std::string& strHost, long long now,
                        double timeoutSeconds);
    static std::string GetHostName();
};
