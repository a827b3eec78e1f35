#pragma once

namespace orvo::db {

// The two engines the suite runs on. The numbers are what GetDatabaseKind answers:
// 1 takes the Access dialect through translation, 2 is the server engine.
enum class Engine { Sqlite = 1, Postgres = 2 };

}  // namespace orvo::db
