#include "platform/KvCLocale.h"

locale_t KvCLocale() {
  // newlocale on "C" cannot fail for lack of locale data; if it ever did,
  // LC_GLOBAL_LOCALE keeps uselocale() calls valid.
  static const locale_t c = [] {
    locale_t l = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return l ? l : LC_GLOBAL_LOCALE;
  }();
  return c;
}
