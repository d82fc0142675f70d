#pragma once

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "adapters/gpib/native_gpib.h"

namespace orvane::test {

inline constexpr int kErr = 0x8000;
inline constexpr int kErrTimo = 0xC000;
inline constexpr int kEnol = 2;
inline constexpr int kEabo = 6;

/// The station on the stand-in, which answers each line that ends in "?" with the line itself.
class NativeGpibRig : public testing::Test {
 protected:
  NativeGpibRig() : library_(::dlopen(GPIB_STAND_IN_FILE, RTLD_NOW)) {
    std::filesystem::remove(journal_);
    ::setenv("GPIB_STAND_IN_JOURNAL", journal_.c_str(), 1);
    ::setenv("GPIB_STAND_IN", "1=echo 2=echo 9=echo", 1);
    StandInWith("");
  }
  ~NativeGpibRig() override {
    std::filesystem::remove(journal_);
    ::dlclose(library_);
  }

  void StandInWith(const char* faults) {
    ::setenv("GPIB_STAND_IN_FAULTS", faults, 1);
    Call<void>("GpibStandInBegin");
  }
  [[nodiscard]] int OpenDevices() { return Call<int>("GpibStandInOpenDevices"); }

  /// The calls since the last time.
  std::vector<std::string> Calls() {
    std::ifstream file(journal_);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    std::filesystem::remove(journal_);
    return lines;
  }

  static std::optional<GpibError> ErrorOf(const std::function<void()>& message) {
    try {
      message();
    } catch (const GpibError& error) {
      return error;
    }
    return std::nullopt;
  }
  static void ExpectError(const std::optional<GpibError>& error, int ibsta, int iberr, const std::string& text) {
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->ibsta, ibsta);
    EXPECT_EQ(error->iberr, iberr);
    EXPECT_EQ(error->what(), text);
  }

  NativeGpib bus_{GPIB_STAND_IN_FILE};

 private:
  template <class Result>
  Result Call(const char* symbol) {
    return reinterpret_cast<Result (*)()>(::dlsym(library_, symbol))();
  }

  void* library_;
  std::filesystem::path journal_ =
      std::filesystem::temp_directory_path() / ("orvane-gpib-calls-" + std::to_string(::getpid()));
};

}  // namespace orvane::test
