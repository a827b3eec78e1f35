#pragma once

#include <QString>

namespace orvo::scenario {

// A server database of a scenario's own, made on construction and dropped with the object. It
// is a fresh schema in the named database when that can be kept apart from everything else
// there (nothing but the schema and the one holding citext on its search path); when citext
// sits in a schema that holds tables, as in a practice set up before citext had a schema of its
// own, it is a fresh database on the same server instead. Nothing the scenario does reaches
// any other schema or database.
class ScenarioDatabase {
public:
    explicit ScenarioDatabase(const QString& conninfo);
    ~ScenarioDatabase();
    ScenarioDatabase(const ScenarioDatabase&) = delete;
    ScenarioDatabase& operator=(const ScenarioDatabase&) = delete;

    // Where the scenario's practice is: a conninfo and a schema (empty for a database's own).
    const QString& conninfo() const { return conninfo_; }
    const QString& schema() const { return schema_; }

private:
    QString adminConnInfo_;
    QString conninfo_;
    QString schema_;
    QString database_;
};

}  // namespace orvo::scenario
