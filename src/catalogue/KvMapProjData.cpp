#include "catalogue/KvMapProjData.h"

#include <atomic>
#include <cmath>

#include "catalogue/KvParameterSetFactory.h"
#include "platform/tsf.h"

namespace {

struct SDefault {
  const char* name;
  const char* ellipsoid;
  double values[10];  // in the set's constructor order
};

// The default record of each method, indexed by projection type - 1.
// "Zealang" is the catalogue's own spelling and is kept.
const SDefault kDefaults[] = {
    {"Default Transverse Mercator", "WE", {0.9996, 0, 0, 500000, 0}},
    {"Default Lambert 2SP", "WE", {5, 10, 0, 0, 500000, 0}},
    {"Default Lambert 1SP", "WE", {0.9996, 0, 0, 500000, 0}},
    {"Default Stereographic", "WE", {1, 0, 0, 500000, 0}},
    {"Default New Zealang Map Grid", "IN", {173, -41, 2510000, 6023150}},
    {"Default Hotine Oblique Mercator", "RF", {0.9996, 0, 0, 0, 500000, 0}},
    {"Default Oblique Mercator", "BR", {0.9996, 0, 0, 0, 500000, 0}},
    {"Default Rectified Skew Orthomorphic", "EB", {0.9996, 0, 0, 0, 0, 500000, 0}},
    {"Default Rotated Longitude/Latitude", "XY", {0, 0, 0}},
    {"Default Mercator 2SP", "WE", {0, 0, 0, 0}},
    {"Default Mercator 1SP", "WE", {0, 0, 0, 0}},
    {"Default Stereographic North Pole", "WE", {60, 0, 0, 0}},
    {"Default Stereographic South Pole", "WE", {-60, 0, 0, 0}},
    {"Default Geographical", "WE", {0}},
    {"Default Krovak Oblique Conformal Conic", "BR", {0.9999, 0, 0, 0, 0, 0, 1, 1, 500000, 0}},
    {"Default Albers Equal Area", "WE", {5, 10, 0, 0, 500000, 0}},
    {"Default Lambert Azimuthal Equal Area", "WE", {0, 0, 500000, 0}},
    {"Default Cassini-Soldner", "WE", {0, 0, 0, 0}},
    {"Default Equidistant Conic", "WE", {5, 10, 0, 0, 0, 0}},
    {"Default Polar Stereographic", "WE", {1, 0, 0, 500000, 0}},
};

bool IsMethod(CKvMapProjData::EProjectionType type) { return type >= 1 && type <= 20; }

// p[0] + p[1] x + p[2] x^2 + ... in Horner form; p has `n` entries.
double Poly(const double* p, int n, double x) {
  double sum = 0.0;
  for (int i = n - 1; i >= 0; --i) sum = sum * x + p[i];
  return sum;
}

// Each coefficient as a polynomial in x, lowest power first.
typedef double Series[4][5];

// Transverse Mercator (x = third flattening n), Krueger's series.
const Series kTmForward = {{0, 1.0 / 2, -2.0 / 3, 5.0 / 16, 41.0 / 180},
                           {0, 0, 13.0 / 48, -3.0 / 5, 557.0 / 1440},
                           {0, 0, 0, 61.0 / 240, -103.0 / 140},
                           {0, 0, 0, 0, 49561.0 / 161280}};
const Series kTmInverse = {{0, 1.0 / 2, -2.0 / 3, 37.0 / 96, -1.0 / 360},
                           {0, 0, 1.0 / 48, 1.0 / 15, -437.0 / 1440},
                           {0, 0, 0, 17.0 / 480, -37.0 / 840},
                           {0, 0, 0, 0, 4397.0 / 161280}};
// Conformal latitude back to geodetic latitude (x = e^2).
const Series kConformal = {{0, 1.0 / 2, 5.0 / 24, 1.0 / 12, 13.0 / 360},
                           {0, 0, 7.0 / 48, 29.0 / 240, 811.0 / 11520},
                           {0, 0, 0, 7.0 / 120, 81.0 / 1120},
                           {0, 0, 0, 0, 4279.0 / 161280}};
// Authalic latitude back to geodetic latitude (x = e^2); three terms.
const Series kAuthalic = {{0, 1.0 / 3, 31.0 / 180, 517.0 / 5040, 0},
                          {0, 0, 23.0 / 360, 251.0 / 3780, 0},
                          {0, 0, 0, 761.0 / 45360, 0},
                          {0, 0, 0, 0, 0}};
// Meridian arc (x = e^2).
const Series kArc = {{1, -1.0 / 4, -3.0 / 64, -5.0 / 256, 0},
                     {0, 3.0 / 8, 3.0 / 32, 45.0 / 1024, 0},
                     {0, 0, 15.0 / 256, 45.0 / 1024, 0},
                     {0, 0, 0, 35.0 / 3072, 0}};
// Footpoint latitude (x = e1 = (1 - sqrt(1 - e^2)) / (1 + sqrt(1 - e^2))).
const Series kFootpoint = {{0, 3.0 / 2, 0, -27.0 / 32, 0},
                           {0, 0, 21.0 / 16, 0, -55.0 / 32},
                           {0, 0, 0, 151.0 / 96, 0},
                           {0, 0, 0, 0, 1097.0 / 512}};

void Evaluate(const Series& series, int terms, double x, double* c) {
  for (int k = 0; k < terms; ++k) c[k] = Poly(series[k], 5, x);
}

}  // namespace

namespace {

// Renames of listed records, process-wide.  Atomic because look-ups in
// several threads read it; renames themselves are catalogue changes, which
// are not made while other threads use the catalogue.
std::atomic<std::uint64_t>& ListedRenames() {
  static std::atomic<std::uint64_t> count(0);
  return count;
}

}  // namespace

CKvMapProjData::CKvMapProjData() : m_nRenames(0), m_nLists(0) {}

CKvMapProjData::CKvMapProjData(const CKvMapProjData&) : m_nRenames(0), m_nLists(0) {}

CKvMapProjData& CKvMapProjData::operator=(const CKvMapProjData& other) {
  if (this != &other) _NoteRenamed();
  return *this;
}

CKvMapProjData::~CKvMapProjData() = default;

std::uint64_t CKvMapProjData::GetListedRenameCount() {
  return ListedRenames().load(std::memory_order_acquire);
}

void CKvMapProjData::_NoteRenamed() {
  ++m_nRenames;
  if (m_nLists > 0) ListedRenames().fetch_add(1, std::memory_order_acq_rel);
}

int CKvMapProjData::GetNoOfProjections() { return 20; }

CKvMapProjData::EProjectionType CKvMapProjData::Enum2ProjectionType(int index) {
  return static_cast<EProjectionType>(index + 1);
}

int CKvMapProjData::ProjectionType2Enum(EProjectionType type) { return static_cast<int>(type) - 1; }

bool CKvMapProjData::IsEquivalent(int mask, EProjectionType type) {
  if (type == eNonProjected || type == eUndefined) return false;
  if (type == eRotatedLongitudeLatitude || type == eGeographical) return (mask & 2) != 0;
  return (mask & 1) != 0;
}

bool CKvMapProjData::tsfGetParamDMS(void* section, const char* keyword, int* degrees, int* minutes,
                                    double* seconds) {
  *degrees = 0;
  *minutes = 0;
  *seconds = 0.0;
  void* key = tsfKeywordByNameNum(section, keyword, 1);
  if (!key) return false;
  const int count = tsfGetNoParams(key);
  *degrees = tsfGetInt(tsfParamByNum(key, 1));
  if (count >= 2) *minutes = tsfGetInt(tsfParamByNum(key, 2));
  if (count >= 3) *seconds = tsfGetDouble(tsfParamByNum(key, 3));
  return true;
}

CKvMapProjData* CKvMapProjData::CreateProjection(EProjectionType type, const std::string& name,
                                                 const std::string& branch,
                                                 const std::string& ellipsoid, double* parameters) {
  return CKvParameterSetFactory::Create(type, name, branch, ellipsoid, parameters, true, true);
}

CKvMapProjData* CKvMapProjData::CreateDefaultParameterProjection(EProjectionType type) {
  if (!IsMethod(type)) return nullptr;
  const SDefault& d = kDefaults[type - 1];
  return CKvParameterSetFactory::Create(type, d.name, "", d.ellipsoid, d.values, false, false);
}

void CKvMapProjData::ComputeFourierCoefficients(EProjectionType type, bool forward, double x,
                                                double* c) {
  switch (type) {
    case eTransverseMercator:
      Evaluate(forward ? kTmForward : kTmInverse, 4, x, c);
      break;
    case eStereographic:
    case eHotineObliqueMercator:
    case eObliqueMercator:
    case eRectifiedSkewOrthomorphic:
    case eMercator2SP:
    case eMercator1SP:
    case eStereographicNorthPole:
    case eStereographicSouthPole:
      if (!forward) Evaluate(kConformal, 4, x, c);
      break;
    case eAlbersEqualArea:
    case eLambertAzimuthalEqualArea:
      if (!forward) Evaluate(kAuthalic, 3, x, c);
      break;
    case eCassiniSoldner:
    case eEquidistantConic:
      if (forward) {
        Evaluate(kArc, 4, x, c);
      } else {
        const double s = std::sqrt(1.0 - x);
        Evaluate(kFootpoint, 4, (1.0 - s) / (1.0 + s), c);
      }
      break;
    default:
      break;
  }
}
