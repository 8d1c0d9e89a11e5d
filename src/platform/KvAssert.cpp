#include "platform/KvAssert.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// "src/datum/Matrix.cpp" -> "Matrix": the module name without folder or suffix.
void ModuleName(const char* file, char* out, size_t size) {
  const char* base = std::strrchr(file, '/');
  base = base ? base + 1 : file;
  size_t n = std::strcspn(base, ".");
  if (n >= size) n = size - 1;
  std::memcpy(out, base, n);
  out[n] = '\0';
}

}  // namespace

void KvCartPlatform::KvAssertFail(const char* condition, const char* file, int line,
                                  const char* function) {
  char module[128];
  ModuleName(file, module, sizeof module);
  std::fprintf(stderr, "%s:%d: %s: Assertion `%s' failed.\n", module, line, function, condition);
  std::fflush(stderr);
  std::abort();
}
