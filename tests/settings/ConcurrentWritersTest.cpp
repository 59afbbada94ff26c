#include <gtest/gtest.h>

#include <cstdio>
#include <spawn.h>
#include <sys/wait.h>
#include <fcntl.h>
#include <unistd.h>

#include "support/TempDir.h"
#include "settings/CRegistryKey.h"
#include "settings/SettingsStore.h"

extern char** environ;

namespace vexplot {
namespace {

constexpr int kWriters = 8;
constexpr int kValuesEach = 150;

// Starts one settings_writer whose standard input is `startGate`; it begins
// writing when the gate's write end is closed.
pid_t SpawnWriter(const std::string& database, int id, int startGate) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, startGate, 0);
    const std::string idText = std::to_string(id);
    const std::string countText = std::to_string(kValuesEach);
    std::string program = SETTINGS_WRITER;
    char* args[] = {program.data(), const_cast<char*>(database.c_str()),
                    const_cast<char*>(idText.c_str()), const_cast<char*>(countText.c_str()),
                    nullptr};
    pid_t pid = -1;
    const int error = posix_spawn(&pid, program.c_str(), &actions, nullptr, args, environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? pid : -1;
}

// All writers open a database that does not exist yet, so they also race to
// create the file, switch it to WAL and create the tables.
TEST(ConcurrentWriters, ProcessesWritingAtOnceLoseNoValue) {
    test::TempDir dir{"vexplot-settings"};
    const std::string database = dir.File("fresh/registry.db");
    int gate[2];
    ASSERT_EQ(pipe2(gate, O_CLOEXEC), 0);  // the writers keep only their dup on fd 0
    std::vector<pid_t> writers;
    for (int id = 0; id < kWriters; ++id) {
        writers.push_back(SpawnWriter(database, id, gate[0]));
        ASSERT_GT(writers.back(), 0);
    }
    close(gate[0]);
    close(gate[1]);  // opens the gate for all of them at once
    for (const pid_t pid : writers) {
        int status = 0;
        ASSERT_EQ(waitpid(pid, &status, 0), pid);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "writer status " << status;
    }
    auto store = SettingsStore::OpenUnshared(database);
    CRegistryKey shared(nullptr, store);
    CRegistryKey own(nullptr, store);
    ASSERT_EQ(shared.Open("Shared"), 1);
    EXPECT_EQ(shared.ValueNames().size(), size_t{kWriters * kValuesEach});
    for (int id = 0; id < kWriters; ++id) {
        ASSERT_EQ(own.Open("Writer" + std::to_string(id)), 1);
        for (int i = 0; i < kValuesEach; ++i) {
            char name[32];
            std::snprintf(name, sizeof name, "w%d_%d", id, i);
            ASSERT_EQ(shared.ReadInt(name), id * 100000 + i) << name;
            ASSERT_EQ(own.ReadString(name), name);
        }
    }
}

}  // namespace
}  // namespace vexplot
