#pragma once

#include <QString>

#include "platform/db/connection.h"

namespace orvo::host {

class HostGIC;

// Makes sure the logins hold "SUPERVISOR"; a new one has the empty password, as a new database
// has.
void EnsureSupervisor(db::Connection& connection);

// True when a login of that name (in any letter case) exists.
bool LoginExists(db::Connection& connection, const QString& name);

// True when a login of that name (in any letter case) exists and the password is its own. The
// stored form is compared under the host's default cipher key, which this arms.
bool VerifyLogin(db::Connection& connection, HostGIC& gic, const QString& name,
                 const QString& password);

// Gives a login the right key at an office location (write flag set). The login name is
// stored in upper case, as rights are looked up.
void GrantRight(db::Connection& connection, const QString& login, int location, const QString& key);

}  // namespace orvo::host
