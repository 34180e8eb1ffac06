// spellwick-bridge: offers the assist tools that run in Wine on sockets.
#include <cstdio>
#include <exception>

#include "bridge/bridge_run.h"
#include "bridge/command_line.h"
#include "platform/linux/assist_folder.h"

namespace {

constexpr int kCannotOffer = 2;

int Refuse(const char* trouble) {
    std::fprintf(stderr, "spellwick-bridge: %s\n", trouble);
    return kCannotOffer;
}

}  // namespace

int main(int argc, char** argv) {
    using namespace spellwick;
    const bridge::BridgeCommandLine line = bridge::ReadCommandLine({argv + 1, argv + argc});
    if (!line.trouble.empty()) {
        return Refuse(line.trouble.c_str());
    }
    if (!line.answer.empty()) {
        std::fputs(line.answer.c_str(), stdout);
        return 0;
    }
    try {
        bridge::BridgeRun run(line.options,
                              std::filesystem::read_symlink("/proc/self/exe").parent_path());
        if (line.options.once) {
            run.LookOnce();
        } else {
            run.Run(AssistFolder());
        }
        return 0;
    } catch (const std::exception& failure) {
        return Refuse(failure.what());
    }
}
