// A registry that a test fills, and the record of what was looked up.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/installation.h"

namespace spellwick {

class RecordingInstallation : public Installation {
  public:
    bool HasKey(const std::string& key) override {
        asked.push_back(key);
        return keys.contains(key);
    }
    std::string ReadText(const std::string& key, const std::string& value) override {
        asked.push_back(key + " : " + value);
        const auto found = keys.find(key);
        return found != keys.end() && found->second.contains(value) ? found->second.at(value) : "";
    }
    // "C:\Game" is "/drives/C/Game".
    std::filesystem::path LocalPath(const std::string& drivePath) override {
        if (drivePath.size() < 2 || drivePath[1] != ':') {
            return {};
        }
        std::string path = "/drives/" + drivePath.substr(0, 1) + drivePath.substr(2);
        for (char& sign : path) {
            sign = sign == '\\' ? '/' : sign;
        }
        return path;
    }

    // Keys with their values.
    std::map<std::string, std::map<std::string, std::string>> keys;
    std::vector<std::string> asked;
};

}  // namespace spellwick
