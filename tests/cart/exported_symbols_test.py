"""The symbols libKvCart.so exports: the flat C entries that include/KvCart.h
declares, and the class interface (the CKv classes and the platform pieces in
the inline namespace KvCartPlatform), and nothing else.

    python3 tests/cart/exported_symbols_test.py PATH_TO_libKvCart.so PATH_TO_KvCart.h
"""
import re
import subprocess
import sys
import unittest

LIBRARY = None
HEADER = None

# Demangled C++ names of the class interface.
CLASS_FACE = re.compile(
    r"^((typeinfo name|typeinfo|vtable|VTT) for |(non-)?virtual thunk to )?"
    r"(CKv|KvCartPlatform::)")


def exported():
    """(name, demangled) of every defined dynamic symbol."""
    raw = subprocess.run(["nm", "-D", "--defined-only", LIBRARY], check=True,
                         capture_output=True, text=True).stdout.split("\n")
    names = [line.split()[-1] for line in raw if line.strip()]
    demangled = subprocess.run(["c++filt"], input="\n".join(names), check=True,
                               capture_output=True, text=True).stdout.split("\n")
    return list(zip(names, demangled))


def declared_c_entries():
    with open(HEADER) as f:
        text = f.read()
    return set(re.findall(r"^KVCART_C_API\s+[\w\s*]*?\b(\w+)\s*\(", text, re.MULTILINE))


class ExportedSymbolsTest(unittest.TestCase):
    def test_c_entries_are_exactly_those_of_the_header(self):
        declared = declared_c_entries()
        self.assertIn("C_KVMP_CREATE", declared)
        self.assertIn("S_GETVERSION", declared)
        c_names = {name for name, _ in exported() if not name.startswith("_Z")}
        self.assertEqual(c_names, declared)

    def test_cpp_symbols_belong_to_the_class_interface(self):
        stray = [d for name, d in exported() if name.startswith("_Z") and not CLASS_FACE.match(d)]
        self.assertEqual(stray, [])
        demangled = [d for _, d in exported()]
        # The parameter-file functions stay inside; the string class and the
        # matrices are exported under their namespace only.
        self.assertFalse([d for d in demangled if d.startswith("tsf")])
        self.assertFalse([d for d in demangled if re.match(r"^(CString|CMatrix|KvAssertFail)\b", d)])
        self.assertIn("KvCartPlatform::CString::Find(char const*, int) const", demangled)
        self.assertTrue(any(d.startswith("CKvMapProjection::Geo2Proj(") for d in demangled))


if __name__ == "__main__":
    LIBRARY, HEADER = sys.argv.pop(1), sys.argv.pop(1)
    unittest.main()
