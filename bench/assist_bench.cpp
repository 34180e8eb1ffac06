// Reports of the assist tool: through the dispatcher alone, and over the socket with their answers.
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include <benchmark/benchmark.h>
#include <poll.h>

#include "link/assist_dispatcher.h"
#include "link/assist_messages.h"
#include "platform/linux/socket_assist_transport.h"
#include "tests/support/tool_socket.h"

namespace spellwick {
namespace {

// A window that shows nothing: what is measured is the way to it.
class NoView : public AssistView, public AssistLink, public FailureSink {
  public:
    void ShowCounter(i32 /*reagent*/, i32 count) override { shown += count; }
    void ShowTithes(i32 points) override { shown += points; }
    void ShowCurrentMana() override {}
    void ShowAmounts() override {}
    void ShowChances() override {}
    void DebitSpell(i32 /*row*/) override {}
    void StartTimer(i32 /*row*/) override {}
    void EnableCount(bool /*enabled*/) override {}
    void CaptionCount(const std::string& /*caption*/) override {}
    void ArmMeditation() override {}
    void ShowReportedMagery(i32 points) override { shown += points; }
    void ShowReportedIntelligence(i32 points) override { shown += points; }
    void ShowBox(const std::string& /*text*/) override {}
    void YieldEvents() override {}
    void EndReport() override {}
    void FindAssist() override {}
    void HookWindow() override {}
    void UnhookWindow() override {}
    void TakeReports() override {}
    void RequestCount() override {}
    void OnUncaughtFailure(const std::exception& /*failure*/,
                           std::string_view /*action*/) override {
        std::abort();
    }

    std::int64_t shown = 0;
};

struct Joined {
    Joined() { state.AssistLinked = true; }

    SharedState state;
    NoView view;
    AssistDispatcher dispatcher{state, view, view, view};
};

void ReportsThroughTheDispatcher(benchmark::State& run) {
    Joined joined;
    i32 count = 0;
    for (auto _ : run) {
        count = (count + 1) % 1000;
        joined.dispatcher.OnMessage({kAssistStock, 1 + count % 8, count});
    }
    benchmark::DoNotOptimize(joined.view.shown);
    run.SetItemsProcessed(run.iterations());
}
BENCHMARK(ReportsThroughTheDispatcher);

std::filesystem::path OwnFolder() {
    std::string pattern = std::filesystem::temp_directory_path() / "assist_bench.XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) {
        std::abort();
    }
    return std::filesystem::path(pattern) / "assist";
}

// A burst is written at once; its answers are read when it has been handled.
void ReportsOverTheSocket(benchmark::State& run) {
    using testing_support::ToolSocket;
    constexpr int kBurst = 500;
    const std::filesystem::path folder = OwnFolder();
    testing_support::MakeAssistFolder(folder);
    {
        ToolSocket tool(folder, "bench.sock");
        Joined joined;
        SocketAssistTransport transport(folder);
        transport.Attach(0, joined.dispatcher);
        std::thread greeter([&] { tool.AcceptAndGreet("UOAssist"); });
        transport.EnumWindows([](WindowHandle, std::string_view) {});
        greeter.join();
        std::string burst;
        for (int i = 0; i < kBurst; ++i) {
            burst += "send 1325 " + std::to_string(1 + i % 8) + ' ' + std::to_string(i) + '\n';
        }
        for (auto _ : run) {
            std::thread writer([&] { tool.Write(burst); });
            std::atomic<int> answered = 0;
            std::atomic<bool> reading = true;
            std::thread reader([&] {
                while (answered < kBurst && tool.ReadLine()) {
                    ++answered;
                }
                reading = false;
            });
            pollfd events{transport.Descriptor(), POLLIN, 0};
            while (reading) {
                poll(&events, 1, 1);
                transport.Service();
            }
            writer.join();
            reader.join();
            if (answered != kBurst) {
                run.SkipWithError("a report has no answer");
                break;
            }
        }
        run.SetItemsProcessed(run.iterations() * kBurst);
    }
    std::filesystem::remove_all(folder.parent_path());
}
BENCHMARK(ReportsOverTheSocket)->UseRealTime();

}  // namespace
}  // namespace spellwick

BENCHMARK_MAIN();
