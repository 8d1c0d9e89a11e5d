// Four threads create, convert with, query and destroy map projections, local
// grids and datum converters at once, by catalogue name and by WKT, after one
// set-up; every answer must equal the one a single thread gets.  Run under
// ThreadSanitizer by the tsan preset, where any unguarded write shared by
// the threads (the catalogue's modified flags, say) is a failure.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "KvCart.h"
#include "TestCatalogue.h"
#include "engines/KvProjection.h"

namespace {

const char* const kSystems[] = {
    "UTM-32",
    "NAD83 / Texas South Central",
    "EPSG:2278",
    " LONG/LAT ",
    "PROJCS[\"Grid\",GEOGCS[\"g\",DATUM[\"d\",SPHEROID[\"Bessel 1841\",6377397.155,299.1528128],"
    "TOWGS84[565.4,50.3,465.6,0,0,0,0]],PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]],"
    "PROJECTION[\"Lambert_Conformal_Conic\"],PARAMETER[\"Central_Meridian\",10],"
    "PARAMETER[\"Standard_Parallel_1\",48],PARAMETER[\"Standard_Parallel_2\",52],"
    "PARAMETER[\"Latitude_Of_Origin\",50],PARAMETER[\"False_Easting\",100000],UNIT[\"Meter\",1]]",
    "No such system",
};
constexpr int kSystemCount = sizeof kSystems / sizeof *kSystems;

// Everything one round asks about one system, as numbers and texts.
struct Answers {
  std::vector<double> numbers;
  std::string texts;
  bool operator==(const Answers& other) const {
    if (texts != other.texts || numbers.size() != other.numbers.size()) return false;
    for (std::size_t i = 0; i < numbers.size(); ++i)
      if (!(numbers[i] == other.numbers[i] || (numbers[i] != numbers[i] && other.numbers[i] != other.numbers[i])))
        return false;
    return true;
  }
};

Answers Ask(const char* system, void* shared) {
  Answers a;
  char text[4096];
  int status = 0;
  void* handle = nullptr;
  C_KVMP_CREATE(system, &handle, &status);
  a.numbers.push_back(status);
  double x = 0, y = 0, lon = 0, lat = 0, X = 0, Y = 0, Z = 0, h = 0;
  C_KVMP_GEO2PROJ(handle, 10.5, 50.5, &x, &y);
  C_KVMP_PROJ2GEO(handle, x, y, &lon, &lat);
  C_KVMP_GEO2XYZ(handle, 10.5, 50.5, 120, &X, &Y, &Z);
  C_KVMP_XYZ2GEO(handle, X, Y, Z, &lon, &lat, &h);
  a.numbers.insert(a.numbers.end(), {x, y, lon, lat, h, C_KVMP_GETCONVERGENCE(handle, 10.5, 50.5)});
  C_KVMP_GETNAME(handle, text, sizeof text - 1, &status);
  a.texts += text;
  C_KVMP_GETPROJECTIONSTRING(handle, text, sizeof text - 1, &status);
  a.texts += text;
  C_KVMP_DESTROY(&handle, &status);

  // The same conversion through a handle all threads share.
  C_KVMP_GEO2PROJ(shared, 10.5, 50.5, &x, &y);
  a.numbers.insert(a.numbers.end(), {x, y});

  a.numbers.insert(a.numbers.end(), {double(S_ISVALID(system)), double(S_HASDATUM(system)),
                                     double(S_ISGEOGRAPHICAL(system)), double(S_ISTYPE(system, 3)),
                                     double(S_AREIDENTICAL(system, "UTM-32")), double(S_GETCOORDSYSTYPE(system))});
  S_PROJECTIONSHORTNAME(system, text, sizeof text - 1, &status);
  a.texts += text;
  S_LONGITUDETOUTMZONE(10.5, text, sizeof text - 1, &status);
  a.texts += text;
  C_KVC_CONVERT2PROJ4(system, nullptr, 0, text, sizeof text - 1, &status);
  a.texts += text;
  S_PROJECTIONORIGIN(system, &lon, &lat, &status);
  a.numbers.insert(a.numbers.end(), {lon, lat, double(status)});
  delete NewKvProjection(system);

  void* grid = nullptr;
  C_KVC_CREATE(system, &grid, &status, 10.5, 50.5, 30);
  if (status == 0) {
    C_KVC_XY2GEO(grid, 1000, 2000, &lon, &lat);
    a.numbers.insert(a.numbers.end(), {lon, lat, C_KVC_GETTRUENORTH(grid, 1000, 2000)});
    C_KVC_DESTROY(&grid, &status);
  }
  void* converter = nullptr;
  C_KVDC_CREATE(system, "UTM-32", &converter, &status);
  if (status == 0) {
    C_KVDC_SETCONVERSIONTYPE(converter, 2);
    x = 10.5, y = 50.5, h = 100;
    C_KVDC_CONVERTXYH(converter, &x, &y, &h);
    a.numbers.insert(a.numbers.end(), {x, y, h});
    C_KVDC_DESTROY(&converter, &status);
  }
  return a;
}

}  // namespace

TEST(Threads, FourThreadsWorkTheLibraryAtOnceAsOneWould) {
  kvtest::EnsureCatalogue();  // the set-up, before any thread starts
  ASSERT_EQ(S_ISVALID("EPSG:2278"), 1);  // the look-up by code, built lazily, is exercised too
  void* shared = nullptr;
  int status = -1;
  C_KVMP_CREATE("UTM-32", &shared, &status);
  ASSERT_EQ(status, 0);
  std::vector<Answers> expected;
  for (const char* system : kSystems) expected.push_back(Ask(system, shared));

  constexpr int kThreads = 4, kRounds = 12;
  std::vector<int> mismatches(kThreads, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int round = 0; round < kRounds; ++round) {
        const int s = (t + round) % kSystemCount;
        if (!(Ask(kSystems[s], shared) == expected[s])) ++mismatches[t];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (int t = 0; t < kThreads; ++t) EXPECT_EQ(mismatches[t], 0) << "thread " << t;
  C_KVMP_DESTROY(&shared, &status);
}
