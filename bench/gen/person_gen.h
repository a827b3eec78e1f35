#pragma once

#include <QString>

#include "platform/db/connection.h"

namespace orvo::bench {

struct GeneratedPersons {
    int persons = 0;
    int families = 0;
    int providers = 0;
    int firstPatient = 0;  // the pID of the first person of the first family
};

// Fills an empty PATable with `persons` made-up people, in one transaction through one prepared
// multi-row insert with bound values: a handful of providers (also employees, with initials and
// a fee schedule), employees, referral sources and physicians, then families of one to six,
// each with its head (now and then a head who is not a patient), members, an archived patient
// here and there. Names are drawn from lists that include accented ones. Every patient has a
// provider, a fee schedule, an address and a home phone in its contact block. FamTable follows
// the families. The same seed gives the same rows.
GeneratedPersons GeneratePersons(db::Connection& connection, int persons, unsigned seed = 1);

// A practice of `persons` persons that is kept between runs, since making a large one takes
// minutes: on SQLite the file persons-N.db in $ORVO_BENCH_DATA (default /tmp/orvo-bench), on
// PostgreSQL the schema bench_persons_N of the server ORVO_TEST_PG names. Made (with the host's
// and the people tables, the family-head list and the default provider) when missing or
// incomplete, saying so on stderr with the time it took; answers the options to open it with.
db::ConnectionOptions KeptPersonPractice(db::Engine engine, int persons);

// The size of the kept practice the person benchmarks share: ORVO_BENCH_PERSONS, else 500,000.
int KeptPracticePersons();

}  // namespace orvo::bench
