#pragma once

// Marks the classes and functions that form the library's public interface.
// The library is built with hidden visibility, so anything without this
// marker stays private to libKvCart.so.
#if defined(KVCART_BUILDING)
#define KVCART_API __attribute__((visibility("default")))
#else
#define KVCART_API
#endif

// The platform pieces the library is written against (the string class
// CString, the small matrices CMatrix and their CKvArray bases, the assertion
// handler) carry names that host programs commonly define for themselves.
// They are declared in the inline namespace KvCartPlatform: source code keeps
// writing CString, but their symbols carry the namespace, so a host's own
// CString can neither replace the library's at load time nor be replaced by
// it.  The parameter-file functions (tsf*) are not exported at all.
