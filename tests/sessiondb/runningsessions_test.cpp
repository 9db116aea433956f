#include "sessiondb/runningsessions.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <vector>

#include "foundation/texttools.h"
#include "foundation/vmemorymappedbuffer.h"
#include "foundation/vnarrowstring.h"
#include "platform/filelock.h"
#include "platform/lasterror.h"
#include "platform/posix/hostsocket.h"
#include "platform/posix/runtimefile.h"
#include "platform/sharedmemory.h"
#include "support/childprocess.h"
#include "support/strings.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

/// The other processes of these tests are forked before this one has a thread of its own.
class RunningSessionsTest : public testing::Test {
  protected:
    RunningSessionsTest() { setenv("XDG_RUNTIME_DIR", folder.GetPath().c_str(), 1); }
    ~RunningSessionsTest() override { unsetenv("XDG_RUNTIME_DIR"); }

    /// Starts another process, which runs `run` with its end of the pipe, and waits for its first report.
    template <class Run>
    void Start(Run run) {
        others.push_back(std::make_unique<ChildProcess>(run));
        ASSERT_TRUE(others.back()->WaitForReport());
    }
    void StartHost(std::u16string_view frameClass, std::initializer_list<const char16_t*> paths) {
        const VStringArray list = Strings(paths);
        Start([frameClass, list](ChildProcess& parent) {
            RunningSessionsHost host(frameClass);
            host.SetPaths(list);
            parent.Report(host.GetError());
            parent.WaitForGo();
            return 0;
        });
    }
    /// A host of ours that answers as `handler` does.
    void StartFalseHost(const platform::HostMessageHandler& handler) {
        Start([handler](ChildProcess& parent) {
            const platform::HostAnnouncement host(kNorHaldenFrameClass, handler);
            parent.Report();
            parent.WaitForGo();
            return 0;
        });
    }
    static constexpr std::size_t kNobodyWasAsked = 99;
    /// Asks, and fails the test when that takes longer than it may.
    static std::string JoinPaths(const RunningSessions& running) {
        return VNarrowString(VJoin(running.paths, u"|"_v, VUnicodeString(), VUnicodeString())).GetData();
    }
    static std::string Ask(std::size_t silentHosts) {
        const Clock::time_point start = Clock::now();
        const RunningSessions running = GetRunningSessionPaths();
        const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
        EXPECT_LT(elapsed.count(), 2300);
        EXPECT_EQ(running.isBusy ? kNobodyWasAsked : running.silentHosts, silentHosts);
        return JoinPaths(running);
    }
    std::size_t CountSockets() const {
        std::size_t count = 0;
        for (const auto& entry : fs::directory_iterator(own)) count += entry.is_socket() ? 1 : 0;
        return count;
    }

    TemporaryFolder folder;
    const fs::path own = folder.GetPath() / "brennmark";
    std::vector<std::unique_ptr<ChildProcess>> others;
};

TEST_F(RunningSessionsTest, EveryHostIsAsked) {
    EXPECT_EQ(Ask(0), "");
    StartHost(kNorHaldenFrameClass, {u"A\\b", u"c"});
    StartHost(kTessalyFrameClass, {u"d"});
    StartHost(kNorHaldenFrameClass, {});
    StartHost(u"Another", {u"e"});
    EXPECT_TRUE(Ask(0) == "A\\b|c|d");
    EXPECT_EQ(CountSockets(), 4U);
    others[0]->LetGo();
    EXPECT_EQ(others[0]->Wait(), 0);
    EXPECT_EQ(CountSockets(), 3U);
    EXPECT_EQ(Ask(0), "d");
    others[1]->Kill();
    EXPECT_EQ(Ask(0), "");
    EXPECT_EQ(CountSockets(), 2U) << "the dead one is forgotten";
    others[2]->Kill();
    StartHost(kNorHaldenFrameClass, {u"e"});
    EXPECT_EQ(CountSockets(), 2U) << "also by the next one of its class";
}

TEST_F(RunningSessionsTest, WhoeverHoldsTheBlocksLockStopsNobodyForLong) {
    StartHost(kNorHaldenFrameClass, {u"a"});
    const std::pair<VUnicodeString, std::size_t> rows[] = {
        {VMemoryMappedBuffer::kSharedName + u".lock"_v, 1},
        {VMemoryMappedBuffer::kSharedName + u".question"_v, kNobodyWasAsked}};
    for (const auto& [name, silentHosts] : rows) {
        Start([name = name](ChildProcess& parent) {
            const platform::LockHandle lock = platform::OpenNamedLock(name);
            platform::AcquireNamedLock(lock, true);
            parent.Report();
            parent.WaitForGo();
            return 0;
        });
        EXPECT_EQ(Ask(silentHosts), "");
        others.pop_back();
    }
    EXPECT_EQ(Ask(0), "a");
    const fs::path question = own / VNarrowString(VMemoryMappedBuffer::kSharedName + u".question"_v).GetData();
    EXPECT_TRUE(fs::remove(question) && fs::create_directory(question));
    EXPECT_EQ(Ask(1), "") << "nor who spoils the question";
    EXPECT_NE(GetRunningSessionPaths().error, 0U);
}

TEST_F(RunningSessionsTest, FalseAnswersAreDropped) {
    using Message = platform::HostMessage;
    const platform::HostMessageHandler handlers[] = {
        [](const Message&) { return UINT64_MAX; },
        [](const Message& message) { return message.second == 0 ? 100 : 101; },
        [](const Message& message) { return message.second == 0 ? 100 : 0; },
        // As long as told, and never written: zeros, which are no list.
        [](const Message&) { return std::uint64_t{3}; },
        [](const Message& message) {
            const auto block = VRef<VMemoryMappedBuffer>::Adopt(new VMemoryMappedBuffer);
            const std::uint8_t bytes[] = {0x7F, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xF0};
            if (message.second != 0 && block->Create(platform::kExistingSize)) block->Append(bytes, sizeof bytes, 0);
            return std::uint64_t{sizeof bytes};
        },
    };
    for (const platform::HostMessageHandler& handler : handlers) StartFalseHost(handler);
    Start([](ChildProcess& parent) {
        // Answers with what is no packet.
        const int runtime = platform::OpenRuntimeFolder();
        const int socket = platform::MakeHostSocket();
        const sockaddr_un address =
            platform::HostAddress(runtime, platform::HostNamePrefix(kTessalyFrameClass) + "0000000000000000");
        if (bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return 1;
        listen(socket, 1);
        parent.Report();
        int peer = -1;
        while (peer < 0) peer = accept(socket, nullptr, nullptr);
        const std::string garbage(5000, 'x');
        send(peer, garbage.data(), garbage.size(), MSG_NOSIGNAL);
        parent.WaitForGo();
        return 0;
    });
    StartHost(kTessalyFrameClass, {u"honest"});
    EXPECT_EQ(Ask(6), "honest");
}

TEST_F(RunningSessionsTest, AFolderThatOthersCanOpenIsNotUsed) {
    fs::create_directories(own);
    fs::permissions(own, fs::perms::all);
    EXPECT_EQ(RunningSessionsHost(kNorHaldenFrameClass).GetError(), platform::kAccessDenied);
    const RunningSessions running = GetRunningSessionPaths();
    EXPECT_EQ(running.error, platform::kAccessDenied);
    EXPECT_EQ(DescribeUnheardHosts(running),
              u"Running applications may not have been found: Access was denied.\nWhat they have open is not known.");
    EXPECT_TRUE(fs::is_empty(own));
    RunningSessions both = running;
    both.silentHosts = 2;
    EXPECT_EQ(DescribeUnheardHosts(both),
              u"Running applications that do not answer: 2\nRunning applications may not have been found: "
              u"Access was denied.\nWhat they have open is not known.");
}

TEST_F(RunningSessionsTest, AnAnswerThatComesTooLateIsNotTakenForAnothers) {
    StartHost(kNorHaldenFrameClass, {u"late"});
    const std::vector<platform::HostName> hosts = platform::FindHosts(kNorHaldenFrameClass).names;
    const VUnicodeString block = VMemoryMappedBuffer::kSharedName;
    const platform::LockHandle lock = platform::OpenNamedLock(block + u".lock");
    ASSERT_TRUE(platform::AcquireNamedLock(lock, true));
    const int runtime = platform::OpenRuntimeFolder();
    const int asker = platform::MakeHostSocket();
    const sockaddr_un address = platform::HostAddress(runtime, hosts.at(0));
    ASSERT_EQ(connect(asker, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_TRUE(platform::SendPacket(asker, {kRunningSessionsMessage, 0, 100}));
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    close(asker);
    close(runtime);
    // The asker makes the block for the next host before this one comes to write.
    platform::SharedMemory next;
    ASSERT_TRUE(platform::OpenSharedMemory(block, 100, next));
    platform::CloseNamedLock(lock);
    const auto deadline = Clock::now() + std::chrono::seconds(5);
    EXPECT_GT(platform::SendToHosts(hosts, kRunningSessionsMessage, 0, 0, deadline).at(0).value, 0U) << "it is done";
    const auto* bytes = static_cast<const std::uint8_t*>(next.view);
    EXPECT_EQ(std::count(bytes, bytes + 100, 0), 100);
    platform::CloseSharedMemory(block, next);
}

TEST_F(RunningSessionsTest, TwoAskAtOnceAlthoughAHostHangs) {
    StartHost(kTessalyFrameClass, {u"b"});
    Start([](ChildProcess& parent) {
        RunningSessionsHost host(kNorHaldenFrameClass);
        parent.Report();
        raise(SIGSTOP);
        return 0;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    ChildProcess other([](ChildProcess&) { return Ask(1) == "b" ? 0 : 1; });
    EXPECT_EQ(Ask(1), "b");
    EXPECT_EQ(other.Wait(), 0);
}

}  // namespace
}  // namespace connectdialog::test
