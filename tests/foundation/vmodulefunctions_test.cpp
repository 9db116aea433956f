#include "foundation/vmodulefunctions.h"

#include <gtest/gtest.h>

namespace connectdialog::test {
namespace {

/// A module that every system of this kind has.
constexpr char16_t kMathModule[] = u"libm.so.6";

TEST(ModuleFunctionsTest, FoundFunctionsAreSetAndOptionalOnesMayBeMissing) {
    void* cosine = nullptr;
    void* missing = nullptr;
    int mine = 0;
    void* kept = &mine;
    const ModuleFunction functions[] = {
        {&cosine, "cos", false, false}, {&missing, "no_such_function", true, false}, {&kept, "sin", false, true}};
    EXPECT_EQ(LoadModuleFunctions(kMathModule, functions).GetCode(), 0U);
    ASSERT_NE(cosine, nullptr);
    EXPECT_EQ(reinterpret_cast<double (*)(double)>(cosine)(0.0), 1.0);
    EXPECT_EQ(missing, nullptr);
    EXPECT_EQ(kept, &mine);
}

TEST(ModuleFunctionsTest, WhatIsNeededAndMissingIsReportedWithPathAndReason) {
    void* pointer = nullptr;
    const ModuleFunction needed[] = {{&pointer, "no_such_function", false, false}};
    VReportMessageParams report = LoadModuleFunctions(kMathModule, needed);
    EXPECT_EQ(report.GetCode(), kReportSymbolNotFound);
    ASSERT_EQ(report.GetInsertCount(), 2U);
    EXPECT_EQ(std::u16string_view(report.GetInserts()[0]), kMathModule);
    EXPECT_FALSE(std::u16string_view(report.GetInserts()[1]).empty());
    EXPECT_EQ(LoadModuleFunctions(u"no\\such\\module.so", needed).GetCode(), kReportModuleNotLoaded);

    const ModuleFunction optional[] = {{&pointer, "cos", true, false}};
    EXPECT_EQ(LoadModuleFunctions(u"no\\such\\module.so", optional).GetCode(), 0U);
    EXPECT_EQ(pointer, nullptr);
}

}  // namespace
}  // namespace connectdialog::test
