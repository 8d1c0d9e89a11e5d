#include "KvCartPaths.h"

#include <unistd.h>

#include <cstdlib>

#ifndef KVCART_BUILD_DATA_DIR
#define KVCART_BUILD_DATA_DIR ""
#endif
#ifndef KVCART_INSTALLED_DATA_DIR
#define KVCART_INSTALLED_DATA_DIR ""
#endif

namespace kvcart {
namespace {

std::string WithSlash(std::string folder) {
  if (!folder.empty() && folder.back() != '/') folder += '/';
  return folder;
}

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

bool HoldsCatalogue(const std::string& folder) {
  return !folder.empty() && access((folder + "ellipsoid.tsf").c_str(), R_OK) == 0;
}

// <prefix>/share/KvCart/ for an executable in <prefix>/bin.
std::string BesideExecutable() {
  char path[4096];
  const ssize_t n = readlink("/proc/self/exe", path, sizeof path - 1);
  if (n <= 0) return "";
  std::string exe(path, static_cast<size_t>(n));
  const size_t slash = exe.rfind('/');
  if (slash == std::string::npos) return "";
  return exe.substr(0, slash) + "/../share/KvCart/";
}

}  // namespace

std::string FindDataFolder(const std::string& override, std::vector<std::string>* searched) {
  std::vector<std::string> candidates;
  if (!override.empty()) {
    candidates.push_back(WithSlash(override));
  } else if (!Environment("KVCART_DATA_DIR").empty()) {
    candidates.push_back(WithSlash(Environment("KVCART_DATA_DIR")));
  } else {
    candidates = {BesideExecutable(), WithSlash(KVCART_BUILD_DATA_DIR),
                  WithSlash(KVCART_INSTALLED_DATA_DIR)};
  }
  for (const std::string& folder : candidates)
    if (HoldsCatalogue(folder)) return folder;
  if (searched) {
    searched->clear();
    for (const std::string& folder : candidates)
      if (!folder.empty()) searched->push_back(folder);
  }
  return "";
}

std::string FindUserFolder(const std::string& override) {
  if (!override.empty()) return WithSlash(override);
  if (!Environment("KVCART_USER_DIR").empty()) return WithSlash(Environment("KVCART_USER_DIR"));
  if (!Environment("XDG_CONFIG_HOME").empty())
    return WithSlash(Environment("XDG_CONFIG_HOME")) + "kvcart/";
  if (!Environment("HOME").empty()) return WithSlash(Environment("HOME")) + ".config/kvcart/";
  return "";
}

}  // namespace kvcart
