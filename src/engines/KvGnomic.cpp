#include "engines/KvGnomic.h"

#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void NotImplemented() {
  std::fputs("Gnomic projection not implemented yet", stdout);
  std::fflush(stdout);
  std::abort();
}

}  // namespace

CKvGnomic::CKvGnomic() { NotImplemented(); }

const char* CKvGnomic::GetName() { return "Gnomic"; }

void CKvGnomic::Geo2Proj(double, double, double*, double*) { NotImplemented(); }

void CKvGnomic::Proj2Geo(double, double, double*, double*) { NotImplemented(); }
