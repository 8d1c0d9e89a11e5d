// libFuzzer target over the whole flat interface: the input is two
// coordinate-system strings (each ended by a NUL byte), a byte choosing the
// entry families to run, and the numbers the entries take.  Every string is
// used as both ends of a datum converter; text buffers are exactly as large
// as the size the entry is told, so an overrun is a sanitizer report.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "KvCart.h"
#include "engines/KvProjection.h"

namespace {

class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : m_p(data), m_end(data + size) {}

  std::string String() {
    const std::uint8_t* nul = static_cast<const std::uint8_t*>(std::memchr(m_p, 0, m_end - m_p));
    const std::uint8_t* stop = nul ? nul : m_end;
    std::string text(reinterpret_cast<const char*>(m_p), stop - m_p);
    m_p = nul ? nul + 1 : m_end;
    return text;
  }
  std::uint8_t Byte() { return m_p < m_end ? *m_p++ : 0; }
  double Double() {
    double value = 0.0;
    if (m_end - m_p >= 8) {
      std::memcpy(&value, m_p, 8);
      m_p += 8;
    }
    return value;
  }

 private:
  const std::uint8_t* m_p;
  const std::uint8_t* m_end;
};

// A text entry called with a buffer of exactly size + 1 bytes.
template <class Entry>
void Text(Input& in, Entry entry) {
  const int size = in.Byte() % 2 ? in.Byte() % 48 : 4096;
  std::vector<char> buffer(static_cast<std::size_t>(size) + 1);
  int status = 0;
  entry(buffer.data(), size, &status);
}

void Handles(const char* cs, Input& in, const double* v) {
  void* handle = nullptr;
  int status = 0;
  C_KVMP_CREATE(cs, &handle, &status);
  if (status != 0) return;
  double x = 0, y = 0, lon = 0, lat = 0, h = 0, X = 0, Y = 0, Z = 0, box[4] = {0, 0, 0, 0};
  Text(in, [&](char* b, int s, int* st) { C_KVMP_GETNAME(handle, b, s, st); });
  Text(in, [&](char* b, int s, int* st) { C_KVMP_GETPROJECTIONSTRING(handle, b, s, st); });
  C_KVMP_GEO2PROJ(handle, v[0], v[1], &x, &y);
  C_KVMP_PROJ2GEO(handle, x, y, &lon, &lat);
  C_KVMP_PROJ2GEO(handle, v[2], v[3], &lon, &lat);
  C_KVMP_GETORIGIN(handle, &lon, &lat);
  (void)C_KVMP_GETCONVERGENCE(handle, v[0], v[1]);
  C_KVMP_GETDEFAULTAREA(handle, &box[0], &box[1], &box[2], &box[3]);
  C_KVMP_GEO2XYZ(handle, v[0], v[1], v[4], &X, &Y, &Z);
  C_KVMP_XYZ2GEO(handle, X, Y, Z, &lon, &lat, &h);
  C_KVMP_XYZ2GEO(handle, v[2], v[3], v[4], &lon, &lat, &h);
  C_KVMP_DESTROY(&handle, &status);
  C_KVMP_DESTROY(&handle, &status);
}

void Queries(const char* a, const char* b, Input& in, const double* v) {
  (void)S_HASDATUM(a);
  (void)S_ISVALID(a);
  (void)S_ISLOCAL(a);
  (void)S_ISLONGLAT(a);
  (void)S_ISGEOREFERENCED(a);
  (void)S_ISGEOGRAPHICAL(a);
  (void)S_ISTYPE(a, in.Byte());
  (void)S_AREIDENTICAL(a, b);
  (void)S_GETCOORDSYSTYPE(a);
  Text(in, [&](char* buffer, int s, int* st) { S_PROJECTIONSHORTNAME(a, buffer, s, st); });
  Text(in, [&](char* buffer, int s, int* st) { S_LONGITUDETOUTMZONE(v[0], buffer, s, st); });
  Text(in, [&](char* buffer, int s, int* st) { S_GETGOOGLEMAPPROJECTIONSTRING(buffer, s, st); });
  double lon = 0, lat = 0;
  int status = 0;
  S_PROJECTIONORIGIN(a, &lon, &lat, &status);
  delete NewKvProjection(a);
  double towgs84[7];
  for (int i = 0; i < 7; ++i) towgs84[i] = v[i];
  const int count = in.Byte() % 9;
  Text(in, [&](char* buffer, int s, int* st) { C_KVC_CONVERT2PROJ4(a, towgs84, count, buffer, s, st); });
}

void Grid(const char* cs, Input& in, const double* v) {
  void* grid = nullptr;
  int status = 0;
  C_KVC_CREATE(cs, &grid, &status, v[0], v[1], v[5]);
  if (status != 0) return;
  double p = 0, q = 0;
  Text(in, [&](char* b, int s, int* st) { C_KVC_GETPROJECTIONNAME(grid, b, s, st); });
  Text(in, [&](char* b, int s, int* st) { C_KVC_GETPROJECTIONSTRING(grid, b, s, st); });
  (void)C_KVC_GETTRUENORTH(grid, v[2], v[3]);
  (void)C_KVC_GETPROJNORTH(grid);
  C_KVC_GEO2PROJ(grid, v[0], v[1], &p, &q);
  C_KVC_PROJ2GEO(grid, p, q, &p, &q);
  C_KVC_XY2GEO(grid, v[2], v[3], &p, &q);
  C_KVC_GEO2XY(grid, p, q, &p, &q);
  C_KVC_XY2PROJ(grid, v[2], v[3], &p, &q);
  C_KVC_PROJ2XY(grid, p, q, &p, &q);
  void* projection = C_KVC_GETPROJECTION(grid);
  Text(in, [&](char* b, int s, int* st) { C_KVMP_GETNAME(projection, b, s, st); });
  C_KVC_DESTROY(&grid, &status);
}

void Converter(const char* source, const char* target, Input& in, const double* v) {
  void* converter = nullptr;
  int status = 0;
  C_KVDC_CREATE(source, target, &converter, &status);
  if (status != 0) return;
  double x = v[0], y = v[1], h = v[4], X = v[2], Y = v[3], Z = v[4];
  C_KVDC_SETCONVERSIONTYPE(converter, in.Byte() % 6 - 1);
  C_KVDC_CONVERTXY(converter, &x, &y);
  C_KVDC_INVCONVERTXY(converter, &x, &y);
  C_KVDC_CONVERTXYH(converter, &x, &y, &h);
  C_KVDC_INVCONVERTXYH(converter, &x, &y, &h);
  (void)C_KVDC_DATUMSHIFT(converter, &X, &Y, &Z);
  (void)C_KVDC_INVDATUMSHIFT(converter, &X, &Y, &Z);
  double shift[7];
  for (int i = 0; i < 7; ++i) shift[i] = v[(i + 3) % 8];
  C_KVDC_SETDATUMSHIFT(converter, in.Byte() % 4, shift, in.Byte() % 2);
  C_KVDC_BYPASSXYZ(converter);
  (void)C_KVDC_GETBYPASSXYZ(converter);
  (void)C_KVDC_RESETBYPASSXYZ(converter);
  (void)C_KVDC_INVERTORDER(converter);
  C_KVDC_CONVERTXYH(converter, &x, &y, &h);
  C_KVDC_DESTROY(&converter, &status);
  C_KVDC_DESTROY(&converter, &status);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // No user folder that exists: the fuzzer must not read or write one.
  CARTSETUPLINUX(KVCART_DATA_DIR, "/nonexistent-kvcart-fuzz-user/");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input in(data, size);
  const std::string a = in.String(), b = in.String();
  // Zero runs every family; otherwise the bits choose.
  std::uint8_t families = in.Byte();
  if (families == 0) families = 0xff;
  double v[8];
  for (double& value : v) value = in.Double();
  if (families & 1) Handles(a.c_str(), in, v);
  if (families & 2) Queries(a.c_str(), b.c_str(), in, v);
  if (families & 4) Grid(a.c_str(), in, v);
  if (families & 8) {
    Converter(a.c_str(), b.c_str(), in, v);
    Converter(b.c_str(), a.c_str(), in, v);
    Converter(a.c_str(), a.c_str(), in, v);
  }
  return 0;
}
