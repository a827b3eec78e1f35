#pragma once

#include "tests/support/practice_fixture.h"

namespace orvo::host::test {

// The host's tests run on a practice with the host's tables only.
using HostDatabaseTest = orvo::test::PracticeTest;

}  // namespace orvo::host::test
