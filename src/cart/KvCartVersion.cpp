// The version entries: what the loaded library is, for callers to compare
// with the KVCART_VERSION of the header they were compiled with.

#include "KvCart.h"
#include "cart/KvCartTextInternal.h"

int S_GETVERSION(void) { return KVCART_VERSION; }

void S_GETVERSIONSTRING(char* buffer, int size, int* status) {
  kvcart_c::CopyText(KVCART_VERSION_STRING, buffer, size, status);
}
