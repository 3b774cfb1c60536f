#pragma once

#include <gtest/gtest.h>
#include <process.h>

/// The sample server registered with the system for as long as this lives. It stands beside the tests, which
/// run in their own folder.
struct RegisteredSample {
  RegisteredSample() { EXPECT_EQ(Run("windows_com_test_server.exe", "/RegServer"), 0); }
  ~RegisteredSample() { EXPECT_EQ(Run("windows_com_test_server.exe", "-unregserver"), 0); }

  static std::intptr_t Run(const char* program, const char* arguments) {
    return _spawnlp(_P_WAIT, program, program, arguments, nullptr);
  }
};
