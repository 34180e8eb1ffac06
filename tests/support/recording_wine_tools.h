// A search for assist tools in Wine that writes down what is asked of it.
#pragma once

#include <string>
#include <vector>

#include "platform/wine_tools.h"

namespace spellwick {

class RecordingWineTools : public WineTools {
  public:
    explicit RecordingWineTools(std::vector<std::string>* log) : m_log(log) {}

    void Start() override { m_log->emplace_back("start wine tools"); }
    void Stop() override { m_log->emplace_back("stop wine tools"); }
    std::string Trouble() override { return trouble; }

    std::string trouble;

  private:
    std::vector<std::string>* m_log;
};

}  // namespace spellwick
