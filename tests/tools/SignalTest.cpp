// Signals end the program: it runs in a process of its own.

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#if !defined(_WIN32)

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

namespace
{

namespace fs = std::filesystem;

/// The program, running.
class Process
{
public:
    explicit Process(std::vector<std::string> words)
    {
        words.insert(words.begin(), ROAMSCAN_TOOL);
        std::vector<char*> arguments;
        for (std::string& word : words) {
            arguments.push_back(word.data());
        }
        arguments.push_back(nullptr);
        posix_spawn_file_actions_t actions{};
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        // A shell lets its background jobs ignore SIGINT, and the program would inherit that from the test.
        posix_spawnattr_t attributes{};
        posix_spawnattr_init(&attributes);
        sigset_t handled{};
        sigemptyset(&handled);
        sigaddset(&handled, SIGINT);
        sigaddset(&handled, SIGTERM);
        posix_spawnattr_setsigdefault(&attributes, &handled);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
        started_ = posix_spawn(&id_, ROAMSCAN_TOOL, &actions, &attributes, arguments.data(), environ) == 0;
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&actions);
    }
    Process(Process const&) = delete;
    Process& operator=(Process const&) = delete;
    ~Process()
    {
        if (isRunning()) {
            kill(id_, SIGKILL);
            wait(0);
        }
    }

    [[nodiscard]] bool isRunning() { return started_ && !ended_ && !wait(WNOHANG); }

    void send(int signal) const { kill(id_, signal); }

    /// Waits for the end. @return the signal that ended the process; 0 if it exited
    [[nodiscard]] int signalAtEnd()
    {
        wait(0);
        return WIFSIGNALED(status_) ? WTERMSIG(status_) : 0;
    }

private:
    bool wait(int flags)
    {
        ended_ = ended_ || waitpid(id_, &status_, flags) == id_;
        return ended_;
    }

    pid_t id_ = 0;
    int status_ = 0;
    bool started_ = false;
    bool ended_ = false;
};

/// Whether a panorama is being written to the folder: all its tiles are there, under temporary names.
bool hasTemporaryTiles(fs::path const& folder)
{
    std::error_code ignored;
    for (fs::directory_iterator entry(folder, ignored); entry != fs::directory_iterator();
         entry.increment(ignored))
    {
        if (entry->path().filename().string().starts_with("panorama.part-") &&
            fs::exists(entry->path() / "2.png", ignored))
        {
            return true;
        }
    }
    return false;
}

class SignalTest : public testing::TestWithParam<int>
{
protected:
    /// Starts a simulation that takes long, and waits until it has written a part of its output.
    void startIn(fs::path const& target)
    {
        process.emplace(std::vector<std::string>{"simulate", target.string(), "--seconds", "86400"});
        while (!hasTemporaryTiles(target)) {
            ASSERT_TRUE(process->isRunning());
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }

    support::TemporaryFolder folder;
    std::optional<Process> process;
};

} // namespace

TEST_P(SignalTest, LeavesNothingBehind)
{
    ASSERT_NO_FATAL_FAILURE(startIn(folder.file("walk")));
    process->send(GetParam());
    EXPECT_EQ(process->signalAtEnd(), GetParam());
    EXPECT_EQ(folder.names(), std::vector<std::string>{});
}

TEST_P(SignalTest, LeavesWhatWasThereBefore)
{
    fs::create_directory(folder.file("walk"));
    folder.write("walk/scan.ply", "before");
    ASSERT_NO_FATAL_FAILURE(startIn(folder.file("walk")));
    process->send(GetParam());
    EXPECT_EQ(process->signalAtEnd(), GetParam());
    EXPECT_EQ(folder.names("walk"), std::vector<std::string>{"scan.ply"});
    EXPECT_EQ(folder.read("walk/scan.ply"), "before");
}

INSTANTIATE_TEST_SUITE_P(Signals,
                         SignalTest,
                         testing::Values(SIGINT, SIGTERM, SIGHUP),
                         [](testing::TestParamInfo<int> const& signal) {
                             return signal.param == SIGINT    ? "SIGINT"
                                    : signal.param == SIGTERM ? "SIGTERM"
                                                              : "SIGHUP";
                         });

#endif
