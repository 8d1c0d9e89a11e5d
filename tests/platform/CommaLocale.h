#pragma once

// Switches LC_NUMERIC to a locale whose decimal point is a comma, so tests
// can show that the library's number text does not follow the process
// locale.  When no such locale is installed, one is compiled with localedef
// into a temporary folder and found through LOCPATH.  Restores the previous
// LC_NUMERIC when it goes out of scope.

#include <clocale>
#include <cstdlib>
#include <string>

class CommaLocale {
 public:
  CommaLocale() : m_saved(std::setlocale(LC_NUMERIC, nullptr)) {
    m_active = TryInstalled() || (Compile() && TryInstalled());
  }
  ~CommaLocale() { std::setlocale(LC_NUMERIC, m_saved.c_str()); }
  bool Active() const { return m_active; }

 private:
  static bool TryInstalled() {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "nl_NL.UTF-8"})
      if (std::setlocale(LC_NUMERIC, name) && std::localeconv()->decimal_point[0] == ',') return true;
    return false;
  }

  static bool Compile() {
    static const bool compiled = [] {
      const std::string dir = "/tmp/kvcart-test-locales";
      const std::string command = "mkdir -p " + dir + " && localedef -i de_DE -f UTF-8 " + dir +
                                  "/de_DE.UTF-8 >/dev/null 2>&1";
      if (std::system(command.c_str()) != 0) return false;
      return setenv("LOCPATH", dir.c_str(), 1) == 0;
    }();
    return compiled;
  }

  std::string m_saved;
  bool m_active = false;
};
