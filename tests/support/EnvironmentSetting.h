#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace orvista::testing {

/// A variable of the environment, as long as the object stands; then it is what it was.
class EnvironmentSetting {
public:
    EnvironmentSetting(const char* name, const std::string& value) : name_(name) {
        if (const char* const before = std::getenv(name))
            before_ = before;
        ::setenv(name, value.c_str(), 1);
    }
    ~EnvironmentSetting() {
        if (before_)
            ::setenv(name_, before_->c_str(), 1);
        else
            ::unsetenv(name_);
    }
    EnvironmentSetting(const EnvironmentSetting&) = delete;
    EnvironmentSetting& operator=(const EnvironmentSetting&) = delete;

private:
    const char* name_;
    std::optional<std::string> before_;
};

} // namespace orvista::testing
