// Renders the demo on a one-node Slurm that the test starts itself (munge and the two Slurm
// daemons as root under a temporary folder), through the array script that the batch renderer
// prints, and compares the bytes with a single run. Exits 77 (skipped) when Slurm cannot start.
#include "../BatchProcess.h"

#include <gtest/gtest.h>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <map>
#include <thread>

namespace {
bool gbSkipped = false;
const std::string kDemo = std::string(ORV_SOURCE_DIR) + "/examples/demo.ovp";

std::string ReadFile(const std::string& strPath) {
    std::ifstream in(strPath, std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

std::map<std::string, std::string> Pngs(const std::string& strDir) {
    std::map<std::string, std::string> m;
    if (DIR* pDir = opendir(strDir.c_str())) {
        while (dirent* p = readdir(pDir)) {
            const std::string strName = p->d_name;
            if (strName.size() > 4 && strName.substr(strName.size() - 4) == ".png" && strName[0] != '.')
                m[strName] = ReadFile(strDir + "/" + strName);
        }
        closedir(pDir);
    }
    return m;
}

std::string Shell(const std::string& strCommand) {
    std::string out;
    if (FILE* p = popen(strCommand.c_str(), "r")) {
        char buf[4096];
        size_t n;
        while ((n = fread(buf, 1, sizeof buf, p)) > 0)
            out.append(buf, n);
        pclose(p);
    }
    return out;
}

pid_t Spawn(const std::vector<std::string>& vStrArgs, const std::string& strLog) {
    const pid_t pid = fork();
    if (pid == 0) {
        const int fd = open(strLog.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0644);
        dup2(fd, 1);
        dup2(fd, 2);
        std::vector<char*> argv;
        for (const std::string& s : vStrArgs)
            argv.push_back(const_cast<char*>(s.c_str()));
        argv.push_back(nullptr);
        execvp(argv[0], argv.data());
        _exit(127);
    }
    return pid;
}

// The daemons of one test, stopped by their process ids.
class Farm_cls {
public:
    ~Farm_cls() {
        for (pid_t pid : mVPids) {
            kill(pid, SIGTERM);
            waitpid(pid, nullptr, 0);
        }
        if (!mStrMungePidFile.empty()) {
            const pid_t pid = static_cast<pid_t>(atoi(ReadFile(mStrMungePidFile).c_str()));
            if (pid > 0)
                kill(pid, SIGTERM);
        }
    }
    // Empty on success, otherwise why Slurm could not start.
    std::string Start(const std::string& strDir) {
        for (const char* p : {"munged", "mungekey", "slurmctld", "slurmd", "sbatch"})
            if (system((std::string("command -v ") + p + " >/dev/null 2>&1").c_str()) != 0)
                return std::string(p) + " is not installed (Debian packages slurm-wlm and munge)";
        if (geteuid() != 0)
            return "a one-node Slurm needs root";
        const std::string strKey = strDir + "/munge.key", strSocket = strDir + "/munge.sock";
        mStrMungePidFile = strDir + "/munged.pid";
        if (system(("mungekey -c -k " + strKey + " >/dev/null 2>&1").c_str()) != 0)
            return "mungekey could not make a key";
        const std::string strMunge = "munged --force --key-file=" + strKey + " --socket=" + strSocket +
                                     " --pid-file=" + mStrMungePidFile + " --log-file=" + strDir +
                                     "/munged.log --seed-file=" + strDir + "/munged.seed";
        if (system(strMunge.c_str()) != 0)
            return "munged did not start";
        const std::string strHost = Shell("hostname -s");
        const std::string strNode = strHost.substr(0, strHost.find_first_of("\r\n"));
        const long cpus = sysconf(_SC_NPROCESSORS_ONLN);
        mkdir((strDir + "/state").c_str(), 0755);
        mkdir((strDir + "/spool").c_str(), 0755);
        mStrConf = strDir + "/slurm.conf";
        std::ofstream conf(mStrConf);
        conf << "ClusterName=orvtest\nSlurmctldHost=" << strNode << "\nSlurmUser=root\nSlurmdUser=root\n"
             << "SlurmctldPort=16817\nSlurmdPort=16818\nAuthType=auth/munge\nCredType=cred/munge\n"
             << "AuthInfo=socket=" << strSocket << "\nStateSaveLocation=" << strDir << "/state\n"
             << "SlurmdSpoolDir=" << strDir << "/spool\nSlurmctldPidFile=" << strDir << "/ctld.pid\n"
             << "SlurmdPidFile=" << strDir << "/d.pid\nSlurmctldLogFile=" << strDir << "/ctld.log\n"
             << "SlurmdLogFile=" << strDir
             << "/d.log\nProctrackType=proctrack/linuxproc\nTaskPlugin=task/none\n"
             << "SelectType=select/cons_tres\nSelectTypeParameters=CR_Core\nMpiDefault=none\n"
             << "ReturnToService=2\nJobCompType=jobcomp/none\nAccountingStorageType=accounting_storage/none\n"
             << "NodeName=" << strNode << " CPUs=" << cpus << " State=UNKNOWN\n"
             << "PartitionName=debug Nodes=" << strNode << " Default=YES MaxTime=INFINITE State=UP\n";
        conf.close();
        setenv("SLURM_CONF", mStrConf.c_str(), 1);
        mVPids.push_back(Spawn({"slurmctld", "-D", "-i", "-f", mStrConf}, strDir + "/ctld.out"));
        mVPids.push_back(Spawn({"slurmd", "-D", "-f", mStrConf}, strDir + "/d.out"));
        // Ready when the node answers idle.
        for (int i = 0; i < 300; ++i) {
            if (Shell("sinfo -h -o %t 2>/dev/null").find("idle") != std::string::npos)
                return std::string();
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
        return "the Slurm node did not come up: " + ReadFile(strDir + "/ctld.log").substr(0, 2000);
    }

private:
    std::vector<pid_t> mVPids;
    std::string mStrMungePidFile;
    std::string mStrConf;
};
} // namespace

TEST(FarmTest, SlurmArrayOfFourShardsGivesTheBytesOfOneRun) {
    char tmpl[] = "/tmp/orvfarmXXXXXX";
    const std::string strDir = mkdtemp(tmpl);
    const std::string strOne = strDir + "/one", strFarm = strDir + "/farm";
    mkdir(strOne.c_str(), 0755);
    mkdir(strFarm.c_str(), 0755);
    std::string strLog;
    const int code = BatchProcess_cls::Run(
        {kDemo, "--out", strOne + "/f%04d.png", "--frames", "0-5", "--size", "64x36", "--quiet"}, strLog);
    if (code == 2 && strLog.find("no GL context") != std::string::npos) {
        gbSkipped = true;
        GTEST_SKIP() << strLog;
    }
    ASSERT_EQ(code, 0) << strLog;
    Farm_cls farm;
    const std::string strWhy = farm.Start(strDir);
    if (!strWhy.empty()) {
        gbSkipped = true;
        GTEST_SKIP() << "Slurm cannot start: " << strWhy;
    }
    ASSERT_EQ(BatchProcess_cls::Run({kDemo, "--out", strFarm + "/f%04d.png", "--frames", "0-5", "--size",
                                     "64x36", "--quiet", "--slurm-script", "4"},
                                    strLog),
              0);
    const std::string strScript = strDir + "/job.sh";
    std::ofstream(strScript) << strLog;
    // A job that never leaves the queue means a Slurm that cannot run here: bounded wait.
    const std::string strOut = Shell("cd " + strDir + " && timeout 300 sbatch --wait " + strScript + " 2>&1");
    const auto vFarm = Pngs(strFarm);
    if (strOut.find("Submitted batch job") == std::string::npos || vFarm.empty()) {
        gbSkipped = true;
        GTEST_SKIP() << "Slurm ran no task: " << strOut << ReadFile(strDir + "/d.log").substr(0, 2000);
    }
    EXPECT_EQ(vFarm, Pngs(strOne)) << strOut;
    EXPECT_EQ(Pngs(strOne).size(), 11u);
    if (system(("rm -rf " + strDir).c_str()) != 0)
        ADD_FAILURE() << "could not remove " << strDir;
}

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    if (result == 0 && gbSkipped) {
        fprintf(stderr, "skipped\n");
        return 77;
    }
    return result;
}
