#pragma once

#include "platform/KvCartExport.h"

// Internal consistency checks that stay active in every build type.  A failed
// check prints the condition, the source module and the function signature
// to stderr and stops the process with abort(); it is not an error report
// but the end of a program that called the library wrongly.
#define KV_ASSERT(cond)                                                      \
  ((cond) ? static_cast<void>(0)                                            \
          : ::KvAssertFail(#cond, __FILE__, __LINE__, __PRETTY_FUNCTION__))

inline namespace KvCartPlatform {

[[noreturn]] KVCART_API void KvAssertFail(const char* condition, const char* file,
                                          int line, const char* function);

}  // namespace KvCartPlatform
