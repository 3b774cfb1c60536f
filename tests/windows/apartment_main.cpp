#include <gtest/gtest.h>
#include <windows.h>

#include "windows/com/local_server.h"

int main(int argc, char** argv) {
  const windows::com::Apartment apartment;
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
