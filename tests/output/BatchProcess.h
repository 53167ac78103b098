// Runs the batch renderer as a user runs it: a child process with arguments and extra
// environment, its standard error kept, its exit code returned.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

class BatchProcess_cls {
public:
    // Starts the program; stderr (and stdout) go to strLogPath.
    static pid_t Start(const std::vector<std::string>& vStrArgs, const std::string& strLogPath,
                       const std::vector<std::string>& vStrEnv = {}) {
        const pid_t pid = fork();
        if (pid != 0)
            return pid;
        const int fd = open(strLogPath.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0644);
        dup2(fd, 1);
        dup2(fd, 2);
        for (const std::string& str : vStrEnv)
            putenv(strdup(str.c_str()));
        std::vector<char*> argv;
        argv.push_back(const_cast<char*>(ORV_BATCH_EXE));
        for (const std::string& str : vStrArgs)
            argv.push_back(const_cast<char*>(str.c_str()));
        argv.push_back(nullptr);
        execv(ORV_BATCH_EXE, argv.data());
        _exit(127);
    }
    static int Wait(pid_t pid) {
        int status = 0;
        if (waitpid(pid, &status, 0) < 0)
            return -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    // Runs to the end; the log's text in strLog.
    static int Run(const std::vector<std::string>& vStrArgs, std::string& strLog,
                   const std::vector<std::string>& vStrEnv = {}) {
        char path[] = "/tmp/orvbatchlogXXXXXX";
        const int fd = mkstemp(path);
        close(fd);
        const int code = Wait(Start(vStrArgs, path, vStrEnv));
        std::ifstream in(path);
        std::stringstream ss;
        ss << in.rdbuf();
        strLog = ss.str();
        unlink(path);
        return code;
    }
    // Counts the lines holding the text.
    static int CountLines(const std::string& strLog, const std::string& strPart) {
        std::istringstream in(strLog);
        std::string line;
        int n = 0;
        while (std::getline(in, line))
            n += line.find(strPart) != std::string::npos ? 1 : 0;
        return n;
    }
};
