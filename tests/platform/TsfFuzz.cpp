// libFuzzer target for the parameter-file reader: load, walk every handle,
// read every parameter in every form, close.
#include <cstddef>
#include <cstdint>

#include "platform/TsfTestUtil.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  void* file = tsfLoadBuffer(reinterpret_cast<const char*>(data), size, "fuzz.tsf", 1);
  if (!file) return 0;
  (void)tsftest::Dump(file);
  for (int t = 1; t <= tsfGetNoTargets(file); ++t) {
    void* target = tsfTargetByNum(file, t);
    for (int k = 1; k <= tsfGetNoKeywords(target); ++k) {
      void* keyword = tsfKeywordByNum(target, k);
      for (int p = 1; p <= tsfGetNoParams(keyword); ++p) {
        void* param = tsfParamByNum(keyword, p);
        (void)tsfGetInt(param);
        (void)tsfGetDouble(param);
      }
    }
  }
  tsfClose(&file);
  return 0;
}
