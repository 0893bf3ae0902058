// The host: plug-ins, runtimes, the count of users, and what reaches the host's clients.

#include "CountingContainer.h"

#include <tav/Host.h>
#include <tav/RuntimeNotifierClient.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

using namespace TAV_marlo_v1;

namespace {

using Log = std::vector<std::string>;

/// What the plug-ins below have done; their functions are plain ones.
Log s_log;
std::vector<std::unique_ptr<TestRuntime>> s_runtimes;

void registerPlain(PluginRegistrar& registrar, PluginInfo& info)
{
    info.setText("plain");
    s_runtimes.push_back(std::make_unique<TestRuntime>("plain"));
    EXPECT_FALSE(!registrar.registerRuntime(info, s_runtimes.back().get()));
}
void unregisterAndDelete(PluginInfo const& info)
{
    s_log.push_back(std::string("unregister ") + info.getText());
    s_runtimes.clear();
}
void registerNothing(PluginRegistrar& registrar, PluginInfo& info)
{
    EXPECT_FALSE(!registrar.registerRuntime(info, nullptr));
}
void unregisterNothing(PluginInfo const& info)
{
    s_log.push_back(std::string("unregister nothing") + info.getText());
    Host::terminate(); // changes nothing while the host shuts down
}

struct LoggingClient final : RuntimeNotifierClient {
    void runtimeRegistered(Runtime* runtime) override { note("registered", runtime); }
    void containerChange(Runtime* runtime, EContainerChangeType type, Container*) override
    {
        note(type == eContainerRegistered ? "container+" : "container-", runtime);
    }
    void aboutToBeDeleted(Runtime* runtime) override { note("deleted", runtime); }

    Log log;

private:
    void note(char const* what, Runtime* runtime) { log.push_back(std::string(what) + " " + runtime->getName()); }
};

/// Each case starts and ends with a host that nobody uses.
struct HostCount : testing::Test {
    void SetUp() override { s_log.clear(); }
    void TearDown() override
    {
        s_runtimes.clear();
        EXPECT_EQ(Host::getNumberOfRuntimes(), 0u);
    }
};

TEST_F(HostCount, TheLastTerminateUnregistersThePluginsInOrder)
{
    Host::initialize("first");
    Host::initialize("second");
    EXPECT_STREQ(Host::getName(), "first");
    selfRegisterPlugin(registerPlain, unregisterAndDelete);
    selfRegisterPlugin(registerNothing, nullptr);
    selfRegisterPlugin(registerNothing, unregisterNothing);
    Runtime* const runtime = s_runtimes.front().get();
    EXPECT_EQ(Host::getNumberOfRuntimes(), 1u);
    EXPECT_EQ(Host::getRuntimeByName("plain"), runtime);

    Host::terminate();
    Host::terminate(); // the runtime is the third user
    EXPECT_TRUE(s_log.empty());
    Host::terminate();
    EXPECT_EQ(s_log, Log({"unregister plain", "unregister nothing"}));
    EXPECT_EQ(Host::getRuntimeByName("plain"), nullptr);
    EXPECT_STREQ(Host::getName(), "first");

    // The count is 0 again: one more user names the host, and is the only one.
    Host::terminate();
    Host::initialize("again");
    EXPECT_STREQ(Host::getName(), "again");
    selfRegisterPlugin(registerNothing, unregisterNothing);
    Host::terminate();
    EXPECT_EQ(s_log.size(), 3u);
}

TEST_F(HostCount, RuntimesAreListedByNameAndTheLastOfANameCounts)
{
    Host host;
    TestRuntime b("b"), a("a"), otherA("a");
    for (TestRuntime* const runtime : {&b, &a, &otherA})
        host.registerRuntime(PluginInfo(), runtime);
    EXPECT_EQ(Host::getNumberOfRuntimes(), 2u);
    EXPECT_EQ(Host::getRuntimeAt(0), &otherA);
    EXPECT_EQ(Host::getRuntimeAt(1), &b);
    EXPECT_EQ(Host::getRuntimeAt(2), nullptr);
    EXPECT_EQ(Host::getRuntimeByName("A"), nullptr);
    EXPECT_EQ(Host::getRuntimeByName(nullptr), nullptr);
}

TEST_F(HostCount, ItsClientsHearWhatTheRuntimesTell)
{
    LoggingClient first;
    auto second = std::make_unique<LoggingClient>();
    Host::registerNotifierClient(&first);
    Host::registerNotifierClient(&first);
    Host::registerNotifierClient(second.get());
    Host::registerNotifierClient(nullptr);
    CountingContainer container;
    auto runtime = std::make_unique<TestRuntime>("r");
    TestRuntime keeper("keeper"); // so that the host does not shut down in between
    Host().registerRuntime(PluginInfo(), runtime.get());
    second.reset();
    runtime->registerContainer(&container);
    runtime->registerContainer(&container);
    runtime->unregisterContainer(&container);
    runtime->unregisterContainer(&container);
    runtime.reset();
    EXPECT_EQ(first.log,
              Log({"registered r", "container+ r", "container+ r", "container- r", "container- r", "deleted r"}));
    EXPECT_NE(Host::getRuntimeByName("r"), nullptr); // filed until the host shuts down, never to be used
    Host::unregisterNotifierClient(&first);
}

} // namespace
