#pragma once

#include <chrono>
#include <map>
#include <string>
#include <string_view>
#include <tuple>

#include "platform/parties/settings.h"

namespace fakes {

class FakeSettings : public platform::Settings {
 public:
  std::string user_id = "OFFICER1";
  std::string region = "OK";
  std::string template_folder = "templates/";
  std::string config_folder = "config/";
  std::string local_database_path = "reference.db";
  std::string provider_string = "Provider=local;";
  std::chrono::milliseconds preview_delay{0};

  std::string UserId() const override { return user_id; }
  std::string Region() const override { return region; }
  std::string TemplateFolder() const override { return template_folder; }
  std::string ConfigFolder() const override { return config_folder; }
  std::string LocalDatabasePath() const override { return local_database_path; }
  std::string ProviderString() const override { return provider_string; }
  std::chrono::milliseconds PreviewDelay() const override { return preview_delay; }
};

class FakeSettingsStore : public platform::SettingsStore {
 public:
  void Put(std::string application, std::string section, std::string key, std::string value) {
    values_[{std::move(application), std::move(section), std::move(key)}] = std::move(value);
  }
  std::string GetSetting(std::string_view application, std::string_view section, std::string_view key,
                         std::string_view default_value) const override {
    const auto found = values_.find({std::string(application), std::string(section), std::string(key)});
    return found == values_.end() ? std::string(default_value) : found->second;
  }

 private:
  std::map<std::tuple<std::string, std::string, std::string>, std::string> values_;
};

}  // namespace fakes
