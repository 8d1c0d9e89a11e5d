#pragma once

#include <locale.h>

// The "C" numeric locale, created once, for formatting and reading numbers
// independently of whatever locale the host process has set.
locale_t KvCLocale();

// Switches the calling thread to the "C" locale for its lifetime and restores
// the thread's previous locale afterwards.  Other threads are not affected.
class CKvCLocaleScope {
 public:
  CKvCLocaleScope() : m_previous(uselocale(KvCLocale())) {}
  ~CKvCLocaleScope() { uselocale(m_previous); }
  CKvCLocaleScope(const CKvCLocaleScope&) = delete;
  CKvCLocaleScope& operator=(const CKvCLocaleScope&) = delete;

 private:
  locale_t m_previous;
};
