// Host programs compiled against older headers call engines through the
// virtual tables and read their members at fixed places, so the slot order
// of the two interfaces and each engine's size and the place of its
// semi-major axis are pinned here (x86-64 and other LP64 Itanium-ABI
// targets).
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "catalogue/KvEllipsoid.h"
#include "engines/KvAlbersEqualArea.h"
#include "engines/KvCassiniSoldner.h"
#include "engines/KvEquidistantConic.h"
#include "engines/KvGeographical.h"
#include "engines/KvHotineObliqueMercator.h"
#include "engines/KvKrovak.h"
#include "engines/KvLambert1SP.h"
#include "engines/KvLambert2SP.h"
#include "engines/KvLambertAzimuthalEqualArea.h"
#include "engines/KvMercator1SP.h"
#include "engines/KvMercator2SP.h"
#include "engines/KvNewZealandMapGrid.h"
#include "engines/KvObliqueMercator.h"
#include "engines/KvPolarStereographic.h"
#include "engines/KvProjInterface.h"
#include "engines/KvProjection.h"
#include "engines/KvRectifiedSkewOrthomorphic.h"
#include "engines/KvRotatedLongitudeLatitude.h"
#include "engines/KvStereographic.h"
#include "engines/KvStereographicNorthPole.h"
#include "engines/KvStereographicSouthPole.h"
#include "engines/KvTransverseMercator.h"
#include "engines/KvTransverseMercatorJHS.h"

namespace {

// The virtual-table slot a pointer to a virtual member function names.  In
// the Itanium C++ ABI such a pointer holds the slot's byte offset in the
// table, plus one on most targets; on ARM the offset as it is, with the
// virtual flag in the low bit of the adjustment instead.
template <class F>
long SlotOf(F member) {
  struct {
    std::ptrdiff_t ptr;
    std::ptrdiff_t adj;
  } raw;
  static_assert(sizeof(F) == sizeof raw, "an Itanium pointer to member function");
  std::memcpy(&raw, &member, sizeof raw);
#if defined(__arm__) || defined(__aarch64__)
  if (!(raw.adj & 1)) return -1;
  return static_cast<long>(raw.ptr / static_cast<std::ptrdiff_t>(sizeof(void*)));
#else
  if (!(raw.ptr & 1)) return -1;
  return static_cast<long>((raw.ptr - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)));
#endif
}

TEST(EngineLayout, EngineInterfaceKeepsItsSlotOrder) {
  typedef CKvProjection P;
  // The destructor takes the two slots after TransferParameters.
  EXPECT_EQ(SlotOf(&P::GetName), 0);
  EXPECT_EQ(SlotOf(&P::Geo2Proj), 1);
  EXPECT_EQ(SlotOf(&P::Proj2Geo), 2);
  EXPECT_EQ(SlotOf(&P::GetOrigin), 3);
  EXPECT_EQ(SlotOf(&P::GetConvergence), 4);
  EXPECT_EQ(SlotOf(&P::GetDefaultArea), 5);
  EXPECT_EQ(SlotOf(&P::IsLocal), 6);
  EXPECT_EQ(SlotOf(&P::IsGeographical), 7);
  EXPECT_EQ(SlotOf(&P::free), 8);
  EXPECT_EQ(SlotOf(&P::GetDerivedParameters), 9);
  EXPECT_EQ(SlotOf(&P::GetAnonymousEllipsoid), 10);
  EXPECT_EQ(SlotOf(&P::Clone), 11);
  EXPECT_EQ(SlotOf(&P::TransferParameters), 12);
}

TEST(EngineLayout, FormulaVariantInterfaceKeepsItsSlotOrder) {
  typedef CKvProjInterface V;
  // Its destructor comes first and takes slots 0 and 1.
  EXPECT_EQ(SlotOf(&V::Geo2Proj), 2);
  EXPECT_EQ(SlotOf(&V::Proj2Geo), 3);
  EXPECT_EQ(SlotOf(&V::GetOrigin), 4);
  EXPECT_EQ(SlotOf(&V::GetDefaultArea), 5);
  EXPECT_EQ(SlotOf(&V::GetAnonymousEllipsoid), 6);
}

// The byte offset of the one double in `engine` that holds `a`; -1 when
// there is none or more than one.
long OffsetOfValue(const CKvProjection& engine, std::size_t size, double a) {
  std::vector<unsigned char> bytes(size);
  std::memcpy(bytes.data(), static_cast<const void*>(&engine), size);
  long found = -1;
  for (std::size_t at = 0; at + sizeof a <= size; at += alignof(double)) {
    double value;
    std::memcpy(&value, bytes.data() + at, sizeof value);
    if (value != a) continue;
    if (found >= 0) return -1;
    found = static_cast<long>(at);
  }
  return found;
}

TEST(EngineLayout, EnginesKeepTheirSizeAndTheSemiMajorAxisAfterTheName) {
  // A semi-major axis no other member can equal.
  const double a = 6378137.0625;
  const CKvEllipsoid e("Layout", "LY", a, 298.257223563);
  CKvTransverseMercator tm("Layout", 0.9996, 9, 49, 500000, 0, e);
  CKvTransverseMercatorJHS jhs("Layout", 0.9996, 9, 49, 500000, 0, e);
  CKvLambert1SP lcc1("Layout", 0.9996, 10, 50, 0, 0, e);
  CKvLambert2SP lcc2("Layout", 45, 55, 10, 50, 0, 0, e);
  CKvMercator1SP merc1("Layout", 0.997, 110, 0, 0, e);
  CKvMercator2SP merc2("Layout", 42, 51, 0, 0, e);
  CKvNewZealandMapGrid nzmg("Layout", 173, -41, 2510000, 6023150, e);
  CKvRotatedLongitudeLatitude rotated("Layout", 10, -40, 5, e);
  CKvGeographical geographical("Layout", 0, e);
  CKvStereographic stereographic("Layout", 0.9999, 5, 52, 0, 0, e);
  CKvStereographicNorthPole northPole("Layout", 71, 0, 0, 0, e);
  CKvStereographicSouthPole southPole("Layout", -71, 0, 0, 0, e);
  CKvAlbersEqualArea albers("Layout", 29.5, 45.5, -96, 23, 0, 0, e);
  CKvLambertAzimuthalEqualArea laea("Layout", 10, 52, 4321000, 3210000, e);
  CKvCassiniSoldner cassini("Layout", 13.5, 52.5, 40000, 10000, e);
  CKvEquidistantConic eqdc("Layout", 20, 60, -96, 40, 0, 0, e);
  CKvHotineObliqueMercator hotine("Layout", 0.9999, -133.5, 57, 323, 5e6, -5e6, e);
  CKvObliqueMercator oblique("Layout", 1, 7.5, 47, 90, 2.6e6, 1.2e6, e);
  CKvRectifiedSkewOrthomorphic skew("Layout", 0.99984, 102.25, 4, 323, 323.5, 804671, 0, e);
  CKvKrovak krovak("Layout", 0.9999, 78.5, 24.8, 49.5, 30.3, 0, 1, 1, 0, 0, e);
  struct {
    const char* engine;
    const CKvProjection& object;
    std::size_t size, expectedSize;
  } const cases[] = {
      // The Gauss-Krueger engine keeps the northing of its origin after the
      // members it always had.
      {"CKvTransverseMercator", tm, sizeof tm, 488},
      {"CKvTransverseMercatorJHS", jhs, sizeof jhs, 432},
      {"CKvLambert1SP", lcc1, sizeof lcc1, 376},
      {"CKvLambert2SP", lcc2, sizeof lcc2, 408},
      {"CKvMercator1SP", merc1, sizeof merc1, 360},
      {"CKvMercator2SP", merc2, sizeof merc2, 368},
      {"CKvNewZealandMapGrid", nzmg, sizeof nzmg, 328},
      {"CKvRotatedLongitudeLatitude", rotated, sizeof rotated, 440},
      {"CKvGeographical", geographical, sizeof geographical, 304},
      {"CKvStereographic", stereographic, sizeof stereographic, 432},
      {"CKvStereographicNorthPole", northPole, sizeof northPole, 408},
      {"CKvStereographicSouthPole", southPole, sizeof southPole, 408},
      // The engines that own a formula variant keep its pointer after e^2
      // (the variant's own copy of a lives on the heap, not in the engine).
      {"CKvAlbersEqualArea", albers, sizeof albers, 360},
      {"CKvLambertAzimuthalEqualArea", laea, sizeof laea, 336},
      {"CKvCassiniSoldner", cassini, sizeof cassini, 336},
      {"CKvEquidistantConic", eqdc, sizeof eqdc, 360},
      // The three Hotine engines: seven parameters, then their constants.
      {"CKvHotineObliqueMercator", hotine, sizeof hotine, 520},
      {"CKvObliqueMercator", oblique, sizeof oblique, 520},
      {"CKvRectifiedSkewOrthomorphic", skew, sizeof skew, 520},
      {"CKvKrovak", krovak, sizeof krovak, 496},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.engine);
    EXPECT_EQ(c.size, c.expectedSize);
    // The name (char[256]) follows the table pointer, then comes a.
    EXPECT_EQ(OffsetOfValue(c.object, c.size, a), 8 + 256);
  }
}

// The polar stereographic wrapper holds its name and then the pointer to
// the engine it owns, which holds the ellipsoid.
TEST(EngineLayout, PolarStereographicHoldsItsInnerEngineAfterTheName) {
  const double a = 6378137.0625;
  const CKvEllipsoid e("Layout", "LY", a, 298.257223563);
  CKvPolarStereographic polar("Layout", 0.994, 0, 90, 2000000, 2000000, e);
  EXPECT_EQ(sizeof polar, 8u + 256u + sizeof(void*));
  EXPECT_EQ(OffsetOfValue(polar, sizeof polar, a), -1);
  const CKvProjection* inner = nullptr;
  std::memcpy(&inner, reinterpret_cast<const unsigned char*>(&polar) + 8 + 256, sizeof inner);
  ASSERT_NE(inner, nullptr);
  EXPECT_EQ(OffsetOfValue(*inner, sizeof(CKvStereographic), a), 8 + 256);
}

}  // namespace
