#include "linux/DlLibraries.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

namespace velmo {
namespace {

TEST(DlLibraries, OnlyAnAbsolutePathOpensALibrary)
{
    DlLibraries libraries;
    // Where the C library lies is the loader's secret; it tells by an address in it.
    Dl_info here = {};
    ASSERT_NE(::dladdr(::dlsym(RTLD_DEFAULT, "getpid"), &here), 0);
    const auto library = libraries.Open(here.dli_fname);
    ASSERT_NE(library, nullptr);
    EXPECT_NE(library->Symbol("getpid"), nullptr);
    EXPECT_EQ(library->Symbol("velmo_no_such_symbol"), nullptr);
    EXPECT_EQ(libraries.Open("libc.so.6"), nullptr) << "no search path has a say";
    EXPECT_EQ(libraries.Open("/nonexistent/libbass.so"), nullptr);
    EXPECT_EQ(libraries.Open("/dev/null"), nullptr);
    EXPECT_EQ(libraries.Open(""), nullptr);
}

} // namespace
} // namespace velmo
