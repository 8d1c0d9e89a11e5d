#pragma once

// Marks the classes and functions that form the library's public interface.
// The library is built with hidden visibility, so anything without this
// marker stays private to libKvCart.so.
#if defined(KVCART_BUILDING)
#define KVCART_API __attribute__((visibility("default")))
#else
#define KVCART_API
#endif
