// Every allocation inside the flat entries may fail: each entry then reports
// its failure (status -1, or its neutral result) and leaks nothing, instead
// of ending the host.  Runs as its own program because it replaces the
// global operator new to make the n-th allocation throw std::bad_alloc;
// LeakSanitizer checks at exit that no failure path leaked.

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <new>
#include <string>

#include "KvCart.h"
#include "engines/KvProjection.h"

namespace {

// Allocations left before one fails; negative: none fails.
thread_local long t_allocationsLeft = -1;

void* Allocate(std::size_t size) {
  if (t_allocationsLeft == 0) {
    t_allocationsLeft = -1;
    throw std::bad_alloc();
  }
  if (t_allocationsLeft > 0) --t_allocationsLeft;
  if (void* p = std::malloc(size ? size : 1)) return p;
  throw std::bad_alloc();
}

// Runs `call` with the first allocation failing, then the second, and so on,
// until a run needs no more allocations than it was allowed; `check` sees
// whether that run failed.  Returns how many runs failed.
int FailEachAllocation(const std::function<void()>& call, const std::function<void(bool failed)>& check) {
  int failures = 0;
  for (long n = 0;; ++n) {
    t_allocationsLeft = n;
    call();
    const bool failed = t_allocationsLeft == -1;
    t_allocationsLeft = -1;
    check(failed);
    if (!failed) return failures;
    ++failures;
  }
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }

class AllocationFailure : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { CARTSETUPLINUX(KVCART_DATA_DIR, ""); }
};

TEST_F(AllocationFailure, CreationReportsMinusOneAndKeepsTheHandle) {
  for (const char* coordSys : {"UTM-32", "NAD83 / Texas South Central",
                               "PROJCS[\"x\",GEOGCS[\"g\",DATUM[\"d\",SPHEROID[\"s\",6378137,298.257223563]],"
                               "PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]],"
                               "PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"Central_Meridian\",9],"
                               "PARAMETER[\"Scale_Factor\",0.9996],UNIT[\"Meter\",1]]"}) {
    SCOPED_TRACE(coordSys);
    int marker = 0;
    void* handle = &marker;
    int status = 99;
    const int failures = FailEachAllocation(
        [&] {
          handle = &marker;
          C_KVMP_CREATE(coordSys, &handle, &status);
        },
        [&](bool failed) {
          if (failed) {
            ASSERT_EQ(status, -1);
            ASSERT_EQ(handle, &marker);
          } else {
            ASSERT_EQ(status, 0);
            C_KVMP_DESTROY(&handle, &status);
          }
        });
    EXPECT_GT(failures, 5);
  }
}

TEST_F(AllocationFailure, EveryOtherEntryAnswersWithoutEndingTheProcess) {
  char buffer[4096];
  int status = 0;
  double x = 0, y = 0, z = 0;
  const std::function<void()> calls[] = {
      [&] { status = S_ISVALID(" UTM-32 "); },
      [&] { status = S_AREIDENTICAL("UTM-32", "NAD83 / Texas South Central"); },
      [&] { status = S_GETCOORDSYSTYPE("UTM-32"); },
      [&] { delete NewKvProjection("UTM-33"); },
      [&] { S_PROJECTIONORIGIN("UTM-32", &x, &y, &status); },
      [&] { S_PROJECTIONSHORTNAME("PROJCS[\"A name\",GEOGCS[\"g\"]]", buffer, 4095, &status); },
      [&] { C_KVC_CONVERT2PROJ4("UTM-32", nullptr, 0, buffer, 4095, &status); },
      [&] {
        void* grid = nullptr;
        C_KVC_CREATE("UTM", &grid, &status, 9, 56, 30);
        if (status == 0) C_KVC_DESTROY(&grid, &status);
      },
      [&] {
        void* converter = nullptr;
        C_KVDC_CREATE("UTM-32", "NAD83 / Texas South Central", &converter, &status);
        if (status != 0) return;
        x = 500000, y = 6200000, z = 0;
        C_KVDC_CONVERTXYH(converter, &x, &y, &z);
        C_KVDC_DESTROY(&converter, &status);
      },
  };
  int index = 0;
  for (const auto& call : calls) EXPECT_GT(FailEachAllocation(call, [](bool) {}), 0) << "call " << index++;
}
