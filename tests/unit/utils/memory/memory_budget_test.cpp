#include "utils/memory/memory_budget.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/sysinfo.h>
#include <unistd.h>

#include <fstream>
#include <limits>

namespace {

using namespace libutils;

constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();

TEST(MemoryBudget, ProductsStopAtTheLargestValue) {
    EXPECT_EQ(size_product(6, 7), 42U);
    EXPECT_EQ(size_product(0, most), 0U);
    EXPECT_EQ(size_product(most / 36 + 1, 36), most);
    EXPECT_EQ(size_product(most, most), most);
}

TEST(MemoryBudget, SumsStopAtTheLargestValue) {
    EXPECT_EQ(size_sum(40, 2), 42U);
    EXPECT_EQ(size_sum(most, 0), most);
    EXPECT_EQ(size_sum(most, 1), most);
}

TEST(MemoryBudget, IsAboveNothingAndAtMostHalfOfTheMachine) {
    struct sysinfo info {};
    ASSERT_EQ(sysinfo(&info), 0);
    const std::uint64_t total = std::uint64_t{info.totalram} * info.mem_unit;
    EXPECT_GT(memory_budget(), 0U);
    EXPECT_LE(memory_budget(), total / 2);
}

/// A driver that runs out of its process's address space crashes where we can not tell of it.
TEST(MemoryBudget, IsHalfOfTheAddressSpaceThatIsLeft) {
    constexpr std::uint64_t spare = std::uint64_t{64} << 20;
    std::uint64_t mapped_pages = 0;
    std::ifstream("/proc/self/statm") >> mapped_pages;
    rlimit unlimited{};
    ASSERT_EQ(getrlimit(RLIMIT_AS, &unlimited), 0);
    rlimit limited = unlimited;
    limited.rlim_cur = mapped_pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)) + spare;

    ASSERT_EQ(setrlimit(RLIMIT_AS, &limited), 0);
    const std::uint64_t budget = memory_budget();
    ASSERT_EQ(setrlimit(RLIMIT_AS, &unlimited), 0);
    // The allocator may have given pages back since they were counted.
    EXPECT_LE(budget, spare / 2 + (std::uint64_t{1} << 20));
    EXPECT_GT(budget, spare / 4);
}

TEST(MemoryBudget, SmallSizesFitAndAbsurdOnesDoNot) {
    EXPECT_TRUE(fits_into_memory(0));
    EXPECT_TRUE(fits_into_memory(1024));
    EXPECT_FALSE(fits_into_memory(most));
    EXPECT_FALSE(fits_into_memory(std::uint64_t{1} << 50));
}

TEST(LoadBudget, ClaimsAreSubtractedFromOneSum) {
    const load_budget_t budget(1000);
    EXPECT_EQ(memory_budget(), 1000U);
    EXPECT_TRUE(claim_memory(600));
    EXPECT_EQ(memory_budget(), 400U);
    EXPECT_FALSE(claim_memory(401));
    EXPECT_FALSE(fits_into_memory(401));
    EXPECT_EQ(memory_budget(), 400U);
    EXPECT_TRUE(claim_memory(400));
    EXPECT_FALSE(claim_memory(1));
    EXPECT_TRUE(claim_memory(0));
}

TEST(LoadBudget, QuestionsClaimNothing) {
    const load_budget_t budget(1000);
    EXPECT_TRUE(fits_into_memory(1000));
    EXPECT_TRUE(fits_into_memory(1000));
}

TEST(LoadBudget, OneWithinAnotherSharesItsSum) {
    const load_budget_t outer(1000);
    {
        const load_budget_t inner(50'000);
        const load_budget_t measured;
        EXPECT_EQ(memory_budget(), 1000U);
        EXPECT_TRUE(claim_memory(300));
    }
    EXPECT_EQ(memory_budget(), 700U);
}

TEST(LoadBudget, EndsWithTheLoad) {
    {
        const load_budget_t budget(1000);
        EXPECT_FALSE(claim_memory(1001));
    }
    EXPECT_TRUE(claim_memory(1001));
    const load_budget_t next(2000);
    EXPECT_EQ(memory_budget(), 2000U);
}

TEST(LoadBudget, MeasuredIsWithinTheMemoryThatIsFree) {
    const load_budget_t budget;
    EXPECT_GT(memory_budget(), 0U);
    EXPECT_FALSE(claim_memory(std::uint64_t{1} << 50));
    const std::uint64_t before = memory_budget();
    EXPECT_TRUE(claim_memory(before / 2));
    EXPECT_FALSE(claim_memory(before));
}

/// However much a load may take in all: what is free now is the limit too.
TEST(LoadBudget, IsNeverMoreThanWhatIsFree) {
    const load_budget_t budget(std::uint64_t{1} << 50);
    EXPECT_LT(memory_budget(), std::uint64_t{1} << 50);
    EXPECT_FALSE(claim_memory(std::uint64_t{1} << 49));

    constexpr std::uint64_t spare = std::uint64_t{64} << 20;
    std::uint64_t mapped_pages = 0;
    std::ifstream("/proc/self/statm") >> mapped_pages;
    rlimit unlimited{};
    ASSERT_EQ(getrlimit(RLIMIT_AS, &unlimited), 0);
    rlimit limited = unlimited;
    limited.rlim_cur = mapped_pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)) + spare;
    ASSERT_EQ(setrlimit(RLIMIT_AS, &limited), 0);
    const bool large_is_granted = claim_memory(spare);
    const bool small_is_granted = claim_memory(spare / 64);
    ASSERT_EQ(setrlimit(RLIMIT_AS, &unlimited), 0);
    EXPECT_FALSE(large_is_granted);
    EXPECT_TRUE(small_is_granted);
}

TEST(TrialClaims, AreGivenBackUnlessKept) {
    const load_budget_t budget(1000);
    {
        trial_claims_t claims;
        EXPECT_TRUE(claim_memory(600));
    }
    EXPECT_EQ(memory_budget(), 1000U);
    {
        trial_claims_t claims;
        EXPECT_TRUE(claim_memory(600));
        claims.keep();
    }
    EXPECT_EQ(memory_budget(), 400U);
}

}  // namespace
