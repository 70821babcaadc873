// How many random inputs a test tries. The numbers in the tests are for a plain build; builds that
// run slowly (sanitizers, valgrind, Wine) try a share of them, set for a build by the CMake
// variable KESTREL_TEST_ROUNDS and for one run by the environment variable of that name, in
// percent.
#pragma once

namespace kestrel::test {

/// The share of `full` rounds that this run makes, at least 1. Texts that are no number from 1 to
/// 100 throw std::invalid_argument.
int rounds(int full);

/// Whether all rounds are made, so that even the rarest kinds of inputs must turn up.
bool allRounds();

}  // namespace kestrel::test
