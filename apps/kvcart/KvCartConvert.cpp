#include "KvCartConvert.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <thread>

#include "catalogue/KvEllipsoid.h"
#include "datum/KvDatumConverter.h"
#include "engines/KvProjection.h"
#include "mapproj/KvMapProjection.h"
#include "wkt/KvPRJParser.h"

namespace kvcart {
namespace {

// Input is read and converted in blocks of this size, each split between
// the worker threads at line ends.
constexpr size_t kBlockSize = 8u << 20;
constexpr size_t kMinBytesPerThread = 64u << 10;
constexpr char kUtf8Bom[] = "\xEF\xBB\xBF";

struct SLineError {
  size_t line;  // 1-based within the chunk until reported
  std::string message;
};

struct SChunk {
  const char* begin = nullptr;
  const char* end = nullptr;
  std::string out;
  std::vector<SLineError> errors;
  size_t lines = 0;
  size_t points = 0;
  bool stopped = false;  // strict mode met an error
};

struct SFormat {
  int xyDecimals;
  int heightDecimals;
};

inline bool IsBlank(char c) { return c == ' ' || c == '\t'; }
inline bool IsSeparator(char c) { return c == ' ' || c == '\t' || c == ','; }

// A number at p (an optional '+' allowed); null when there is none.
const char* ReadNumber(const char* p, const char* end, double& value) {
  if (p < end && *p == '+') ++p;
  const std::from_chars_result r = std::from_chars(p, end, value);
  if (r.ec != std::errc() || r.ptr == p) return nullptr;
  return r.ptr;
}

// Blanks, at most one comma, blanks; null when there is no separator.
const char* SkipSeparator(const char* p, const char* end) {
  const char* start = p;
  while (p < end && IsBlank(*p)) ++p;
  if (p < end && *p == ',') ++p;
  while (p < end && IsBlank(*p)) ++p;
  return p == start ? nullptr : p;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A blank-separated word of the form 9,5 (digits, one comma, digits).
bool IsDecimalCommaWord(const char* p, const char* end) {
  if (p < end && (*p == '+' || *p == '-')) ++p;
  const char* digits = p;
  while (p < end && IsDigit(*p)) ++p;
  if (p == digits || p == end || *p != ',') return false;
  digits = ++p;
  while (p < end && IsDigit(*p)) ++p;
  return p > digits && (p == end || *p == '\r');
}

// The first of two or more words like 9,5 on the line, or null: numbers
// written with a decimal comma and separated by blanks, which would
// otherwise read as x 9, y 5.
const char* DecimalCommaWord(const char* p, const char* end) {
  const char* first = nullptr;
  while (p < end) {
    while (p < end && IsBlank(*p)) ++p;
    const char* word = p;
    while (p < end && !IsBlank(*p)) ++p;
    if (p > word && IsDecimalCommaWord(word, p)) {
      if (first) return first;
      first = word;
    }
  }
  return nullptr;
}

std::string DecimalCommaMessage(const char* word, const char* end) {
  const char* wordEnd = word;
  while (wordEnd < end && !IsBlank(*wordEnd) && *wordEnd != '\r') ++wordEnd;
  std::string number(word, wordEnd);
  std::string dotted = number;
  dotted[dotted.find(',')] = '.';
  return "the number " + number + " has a decimal comma: write " + dotted +
         " (a comma separates fields)";
}

// Why a line that does not hold a point cannot be read.
std::string UnreadableMessage(const char* begin, const char* end, bool height) {
  const char* semicolon = static_cast<const char*>(std::memchr(begin, ';', end - begin));
  if (semicolon)
    return "fields separated by ';': separate coordinates by blanks, tabs or a comma and write "
           "numbers with a full stop";
  if (const char* word = DecimalCommaWord(begin, end)) return DecimalCommaMessage(word, end);
  return height ? "cannot read three coordinates (x y h)" : "cannot read two coordinates (x y)";
}

// The first field of a line that is no point: a column header such as
// "x,y,name" starts with neither a digit nor a sign nor a full stop (and is
// not "nan" or "inf", which read as numbers).
bool IsHeader(const char* p, const char* end) {
  while (p < end && IsBlank(*p)) ++p;
  if (p == end || IsDigit(*p) || *p == '+' || *p == '-' || *p == '.' || *p == '#' || *p == '\r')
    return false;
  const char* word = p;
  while (p < end && !IsSeparator(*p) && *p != '\r' && *p != ';') ++p;
  std::string first(word, p);
  for (char& c : first) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  return first != "nan" && first != "inf" && first != "infinity";
}

bool IsBlankOrComment(const char* p, const char* end) {
  while (p < end && IsBlank(*p)) ++p;
  return p == end || *p == '\r' || *p == '\n' || *p == '#';
}

void Append(std::string& out, double value, int decimals) {
  char buffer[400];
  const std::to_chars_result r =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
  if (r.ec == std::errc()) {
    out.append(buffer, r.ptr);
  } else {
    const int n = std::snprintf(buffer, sizeof buffer, "%.*g", 17, value);
    out.append(buffer, static_cast<size_t>(n));
  }
}

class CLineConverter {
 public:
  CLineConverter(CKvDatumConverter& converter, const SFormat& format, bool height, bool ellipsoidal,
                 bool strict, bool geographicSource)
      : m_Converter(converter),
        m_Format(format),
        m_bHeight(height),
        m_bEllipsoidal(ellipsoidal),
        m_bStrict(strict),
        m_bGeographicSource(geographicSource) {}

  void Run(SChunk& chunk) {
    const char* p = chunk.begin;
    while (p < chunk.end) {
      const char* newline = static_cast<const char*>(std::memchr(p, '\n', chunk.end - p));
      const char* lineEnd = newline ? newline : chunk.end;
      ++chunk.lines;
      std::string message;
      if (!Line(p, lineEnd, chunk, message)) {
        chunk.errors.push_back({chunk.lines, message});
        if (m_bStrict) {
          chunk.stopped = true;
          return;
        }
      } else if (newline) {
        chunk.out += '\n';
      }
      p = newline ? newline + 1 : chunk.end;
    }
  }

 private:
  bool Line(const char* begin, const char* end, SChunk& chunk, std::string& message) {
    const char* p = begin;
    while (p < end && IsBlank(*p)) ++p;
    if (p == end || *p == '\r' || *p == '#') {
      chunk.out.append(begin, end);
      return true;
    }
    const char* indentEnd = p;
    double x, y, h = 0.0;
    const char *sep1 = nullptr, *sep1End = nullptr, *sep2 = nullptr, *sep2End = nullptr;
    p = ReadNumber(p, end, x);
    if (p) {
      sep1 = p;
      p = SkipSeparator(p, end);
      sep1End = p;
    }
    if (p) p = ReadNumber(p, end, y);
    if (p && m_bHeight) {
      sep2 = p;
      p = SkipSeparator(p, end);
      sep2End = p;
      if (p) p = ReadNumber(p, end, h);
    }
    if (!p || (p < end && !IsSeparator(*p) && *p != '\r')) {
      message = UnreadableMessage(indentEnd, end, m_bHeight);
      return false;
    }
    // Only a line whose first separator is a bare comma can be one of
    // decimal commas read as fields.
    if (sep1End - sep1 == 1 && *sep1 == ',') {
      if (const char* word = DecimalCommaWord(indentEnd, end)) {
        message = DecimalCommaMessage(word, end);
        return false;
      }
    }
    if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(h)) {
      message = "a coordinate is not a finite number";
      return false;
    }
    if (m_bGeographicSource && std::fabs(y) > 90) {
      double latitude = 0;
      const char* latitudeEnd = ReadNumber(sep1End, end, latitude);
      message = "latitude " + std::string(sep1End, latitudeEnd) + " is outside -90..90";
      return false;
    }
    if (m_bEllipsoidal) {
      m_Converter.Convert(x, y, h);
    } else if (m_bHeight) {
      double shifted = h;  // the point moves as its height says; the height stays
      m_Converter.Convert(x, y, shifted);
    } else {
      m_Converter.Convert(x, y);
    }
    if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(h)) {
      message = "the point lies outside the systems' domain";
      return false;
    }
    std::string& out = chunk.out;
    out.append(begin, indentEnd);
    Append(out, x, m_Format.xyDecimals);
    out.append(sep1, sep1End);
    Append(out, y, m_Format.xyDecimals);
    if (m_bHeight) {
      out.append(sep2, sep2End);
      Append(out, h, m_Format.heightDecimals);
    }
    out.append(p, end);
    ++chunk.points;
    return true;
  }

  CKvDatumConverter& m_Converter;
  SFormat m_Format;
  bool m_bHeight;
  bool m_bEllipsoidal;
  bool m_bStrict;
  bool m_bGeographicSource;  // y is a latitude
};

class CProgress {
 public:
  CProgress(const std::string& name, long long total)
      : m_strName(name),
        m_nTotal(total),
        m_bShow(total > 0 && isatty(STDERR_FILENO)),
        m_Start(std::chrono::steady_clock::now()) {}
  ~CProgress() {
    if (m_bShow && m_bDrawn) std::fputs("\r\033[K", stderr);
  }
  void Update(long long done, size_t points) {
    if (!m_bShow) return;
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - m_Start).count();
    const int percent = static_cast<int>(100.0 * static_cast<double>(done) / m_nTotal);
    const int filled = percent * 30 / 100;
    std::fprintf(stderr, "\r%s [%.*s%*s] %3d%%  %.2f M points/s", m_strName.c_str(), filled,
                 "##############################", 30 - filled, "", percent,
                 seconds > 0 ? static_cast<double>(points) / seconds / 1e6 : 0.0);
    m_bDrawn = true;
  }

 private:
  std::string m_strName;
  long long m_nTotal;
  bool m_bShow;
  bool m_bDrawn = false;
  std::chrono::steady_clock::time_point m_Start;
};

// Splits [begin, end) into up to `parts` pieces that end at line ends.
std::vector<SChunk> Split(const char* begin, const char* end, size_t parts) {
  std::vector<SChunk> chunks;
  const size_t size = static_cast<size_t>(end - begin);
  parts = std::max<size_t>(1, std::min(parts, size / kMinBytesPerThread));
  const char* p = begin;
  for (size_t i = 1; i <= parts && p < end; ++i) {
    const char* cut = i == parts ? end : begin + size * i / parts;
    if (cut < p) cut = p;
    if (cut < end) {
      const char* newline = static_cast<const char*>(std::memchr(cut, '\n', end - cut));
      cut = newline ? newline + 1 : end;
    }
    SChunk chunk;
    chunk.begin = p;
    chunk.end = cut;
    chunks.push_back(std::move(chunk));
    p = cut;
  }
  return chunks;
}

class CFileConverter {
 public:
  CFileConverter(const SConvertSettings& settings, const SFormat& format, size_t threads)
      : m_Settings(settings), m_Format(format) {
    for (size_t i = 0; i < threads; ++i)
      m_Converters.emplace_back(new CKvDatumConverter(settings.from.c_str(), settings.to.c_str()));
    const bool fromGeo = CKvMapProjection(settings.from).IsGeographical();
    const bool toGeo = CKvMapProjection(settings.to).IsGeographical();
    m_bGeographicSource = fromGeo;
    const int type = (fromGeo ? 2 : 0) + (toGeo ? 1 : 0);
    for (auto& c : m_Converters)
      c->SetConversionType(static_cast<CKvDatumConverter::ETypeOfConversion>(type));
  }

  // False when a line failed; `stop` is set when strict mode must end here.
  bool Convert(const std::string& name, std::FILE* in, bool& stop) {
    long long total = -1;
    if (std::fseek(in, 0, SEEK_END) == 0) {
      total = std::ftell(in);
      std::rewind(in);
    }
    CProgress progress(name, total);
    std::string buffer;
    std::vector<char> block(kBlockSize);
    size_t lineBase = 0, points = 0;
    long long done = 0;
    bool ok = true;
    size_t skip = static_cast<size_t>(m_Settings.skipLines);
    bool lookForHeader = true;
    for (;;) {
      const size_t n = std::fread(block.data(), 1, block.size(), in);
      const bool last = n < block.size();
      buffer.append(block.data(), n);
      done += static_cast<long long>(n);
      size_t usable = buffer.size();
      if (!last) {
        const size_t newline = buffer.rfind('\n');
        if (newline == std::string::npos) continue;  // a very long line: read on
        usable = newline + 1;
      }
      size_t offset = 0;
      if (lineBase == 0 && buffer.compare(0, 3, kUtf8Bom) == 0) {
        // A byte-order mark (as spreadsheets write) is copied, not read.
        std::fwrite(kUtf8Bom, 1, 3, stdout);
        offset = 3;
      }
      offset += Preamble(buffer, offset, usable, skip, lookForHeader, lineBase);
      std::vector<SChunk> chunks =
          Split(buffer.data() + offset, buffer.data() + usable, m_Converters.size());
      std::vector<std::thread> workers;
      for (size_t i = 1; i < chunks.size(); ++i)
        workers.emplace_back([this, &chunks, i] { Worker(i).Run(chunks[i]); });
      if (!chunks.empty()) Worker(0).Run(chunks[0]);
      for (std::thread& t : workers) t.join();
      for (SChunk& chunk : chunks) {
        std::fwrite(chunk.out.data(), 1, chunk.out.size(), stdout);
        for (const SLineError& e : chunk.errors)
          std::fprintf(stderr, "%s:%zu: %s\n", name.c_str(), lineBase + e.line, e.message.c_str());
        if (!chunk.errors.empty()) ok = false;
        points += chunk.points;
        lineBase += chunk.lines;
        if (chunk.stopped) {
          stop = true;
          return false;
        }
      }
      progress.Update(done, points);
      buffer.erase(0, usable);
      if (last) break;
    }
    if (std::ferror(in)) {
      std::fprintf(stderr, "%s: read error\n", name.c_str());
      return false;
    }
    return ok;
  }

 private:
  CLineConverter Worker(size_t i) {
    return CLineConverter(*m_Converters[i], m_Format, m_Settings.height,
                          m_Settings.ellipsoidalHeight, m_Settings.strict, m_bGeographicSource);
  }

  // Copies the lines to skip and a column header from the start of
  // buffer[begin, usable), whole lines only; returns the bytes consumed.
  // `skip` and `lookForHeader` carry over to the next block.
  size_t Preamble(const std::string& buffer, size_t begin, size_t usable, size_t& skip,
                  bool& lookForHeader, size_t& lines) {
    size_t offset = begin;
    while ((skip > 0 || lookForHeader) && offset < usable) {
      const size_t newline = buffer.find('\n', offset);
      const size_t lineEnd = newline == std::string::npos || newline >= usable ? usable : newline + 1;
      const char* line = buffer.data() + offset;
      const char* end = buffer.data() + lineEnd;
      if (skip > 0) {
        --skip;
      } else if (!IsBlankOrComment(line, end)) {
        lookForHeader = false;
        if (!IsHeader(line, end)) break;
      }
      std::fwrite(line, 1, lineEnd - offset, stdout);
      ++lines;
      offset = lineEnd;
    }
    return offset - begin;
  }

  const SConvertSettings& m_Settings;
  SFormat m_Format;
  bool m_bGeographicSource = false;
  std::vector<std::unique_ptr<CKvDatumConverter>> m_Converters;
};

// Whether a system's text says its datum shift to WGS 84 (a TOWGS84, of
// zeros perhaps: the WKT of a catalogue name says its record's).
bool SaysDatumShift(const CKvMapProjection& system) {
  CKvPRJParser parser(system.GetProjectionString());
  parser.Parse(false);
  return parser.HasDatumShift();
}

void WarnWithoutDatumShift(const std::string& from, const std::string& to) {
  const CKvMapProjection source(from), target(to);
  CKvEllipsoid a, b;
  if (source.IsLocal() || target.IsLocal() || !source.GetProjection() || !target.GetProjection() ||
      !source.GetProjection()->GetAnonymousEllipsoid(a) ||
      !target.GetProjection()->GetAnonymousEllipsoid(b) || a.IsEquivalent(b) ||
      SaysDatumShift(source) || SaysDatumShift(target))
    return;
  std::fprintf(stderr,
               "kvcart: no datum shift known between %s and %s: converting through the "
               "ellipsoids alone, which can be hundreds of metres off\n",
               source.GetName(), target.GetName());
}

}  // namespace

int RunConvert(const SConvertSettings& settings) {
  WarnWithoutDatumShift(settings.from, settings.to);
  SFormat format;
  format.heightDecimals = settings.precision >= 0 ? settings.precision : 3;
  format.xyDecimals = settings.precision >= 0                          ? settings.precision
                      : CKvMapProjection(settings.to).IsGeographical() ? 9
                                                                       : 3;
  const size_t threads = std::max(1u, std::min(8u, std::thread::hardware_concurrency()));
  CFileConverter converter(settings, format, threads);

  std::vector<std::string> files = settings.files;
  if (files.empty()) files.push_back("-");
  bool ok = true, stop = false;
  for (const std::string& file : files) {
    const bool isStdin = file == "-";
    std::FILE* in = isStdin ? stdin : std::fopen(file.c_str(), "rb");
    if (!in) {
      std::fprintf(stderr, "%s: %s\n", file.c_str(), std::strerror(errno));
      ok = false;
      if (settings.strict) break;
      continue;
    }
    if (!converter.Convert(isStdin ? "<stdin>" : file, in, stop)) ok = false;
    if (!isStdin) std::fclose(in);
    if (stop) break;
  }
  std::fflush(stdout);
  return ok ? 0 : 1;
}

}  // namespace kvcart
