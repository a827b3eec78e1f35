#include "platform/db/procedure.h"

#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>

#include "platform/db/connection.h"
#include "platform/db/database_error.h"
#include "platform/db/recordset.h"
#include "platform/db/translate_sql.h"

namespace orvo::db {
namespace {

bool IsNameChar(QChar c) {
    return c.isLetterOrNumber() || c == u'_';
}

// Cuts a declaration "(@A int, @B nText)" at its top-level commas.
QStringList SplitDeclaration(QString text) {
    text = text.trimmed();
    if (text.startsWith(u'(') && text.endsWith(u')'))
        text = text.mid(1, text.size() - 2);
    QStringList items;
    int depth = 0;
    QString item;
    for (const QChar c : text) {
        if (c == u'(')
            ++depth;
        if (c == u')')
            --depth;
        if (c == u',' && depth == 0) {
            items << item.trimmed();
            item.clear();
        } else {
            item += c;
        }
    }
    if (!item.trimmed().isEmpty())
        items << item.trimmed();
    return items;
}

ParameterType TypeOf(const QString& declaredType, const QString& declaration) {
    const QString base = declaredType.section(u'(', 0, 0).trimmed().toLower();
    static const QStringList integers{QStringLiteral("int"),      QStringLiteral("integer"),
                                      QStringLiteral("smallint"), QStringLiteral("bigint"),
                                      QStringLiteral("bit"),      QStringLiteral("tinyint")};
    static const QStringList texts{QStringLiteral("ntext"),    QStringLiteral("text"),
                                   QStringLiteral("nvarchar"), QStringLiteral("varchar"),
                                   QStringLiteral("nchar"),    QStringLiteral("char")};
    if (integers.contains(base))
        return ParameterType::Integer;
    if (texts.contains(base))
        return ParameterType::WideText;
    throw DatabaseError(
        QStringLiteral("The parameter type %1 of a stored procedure is not supported.")
            .arg(declaredType),
        declaration);
}

}  // namespace

ProcedureArgument ProcedureArgument::Integer(const QString& name, qint64 value) {
    return {name, ParameterType::Integer, value, 4};
}

ProcedureArgument ProcedureArgument::WideText(const QString& name, const QString& value) {
    return {name, ParameterType::WideText, value, value.size()};
}

bool IsPlainProcedureName(const QString& name) {
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]{0,62}$"));
    return plain.match(name).hasMatch();
}

ProcedureDefinition ProcedureDefinition::Parse(const QString& name, const QString& body,
                                               const QString& declaration) {
    if (!IsPlainProcedureName(name)) {
        throw DatabaseError(QStringLiteral("A stored procedure may not be named %1.").arg(name),
                            body);
    }
    ProcedureDefinition definition;
    definition.name = name;
    definition.body = body;
    static const QRegularExpression item(QStringLiteral(R"(^(@\w+)\s+(\w+(?:\s*\([^)]*\))?)$)"));
    for (const QString& text : SplitDeclaration(declaration)) {
        const auto match = item.match(text);
        if (!match.hasMatch()) {
            throw DatabaseError(
                QStringLiteral("The stored procedure parameter \"%1\" cannot be read.").arg(text),
                declaration);
        }
        Parameter parameter{match.captured(1), TypeOf(match.captured(2), declaration),
                            match.captured(2)};
        if (definition.IndexOf(parameter.name) >= 0) {
            throw DatabaseError(
                QStringLiteral("The parameter %1 is declared twice.").arg(parameter.name),
                declaration);
        }
        definition.parameters << parameter;
    }

    // Cut the body at each @Name that stands outside quotes; @@ names are the engine's own.
    QString piece;
    for (qsizetype i = 0; i < body.size();) {
        const QChar c = body[i];
        if (c == u'\'' || c == u'"' || c == u'[') {
            const QChar close = c == u'[' ? u']' : c;
            qsizetype end = i + 1;
            while (end < body.size() && body[end] != close)
                ++end;
            piece += body.mid(i, end + 1 - i);
            i = end + 1;
            continue;
        }
        if (c == u'@' && i + 1 < body.size() && body[i + 1] == u'@') {
            piece += QStringLiteral("@@");
            i += 2;
            continue;
        }
        if (c == u'@') {
            qsizetype end = i + 1;
            while (end < body.size() && IsNameChar(body[end]))
                ++end;
            const QString parameterName = body.mid(i, end - i);
            const int index = definition.IndexOf(parameterName);
            if (index < 0) {
                throw DatabaseError(QStringLiteral("The stored procedure %1 uses %2, which it "
                                                   "does not declare.")
                                        .arg(name, parameterName),
                                    body);
            }
            definition.bodyPieces << piece;
            definition.placeholderOrder << index;
            piece.clear();
            i = end;
            continue;
        }
        piece += c;
        ++i;
    }
    definition.bodyPieces << piece;
    return definition;
}

int ProcedureDefinition::IndexOf(const QString& parameterName) const {
    for (int i = 0; i < parameters.size(); ++i) {
        if (parameters[i].name.compare(parameterName, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

}  // namespace orvo::db

namespace orvo::db {
namespace {

QString ServerType(ParameterType type) {
    return type == ParameterType::Integer ? QStringLiteral("integer") : QStringLiteral("text");
}

// Whether the server holds a function of this name in the schema that this connection writes to.
bool ServerHasFunction(Connection& connection, const QString& name) {
    return ReadScalar(connection,
                      QStringLiteral("SELECT count(*) FROM pg_proc p JOIN pg_namespace n ON "
                                     "n.oid = p.pronamespace WHERE p.proname = '%1' AND "
                                     "n.nspname = current_schema()")
                          .arg(name.toLower()))
               .toLongLong() > 0;
}

}  // namespace

void Connection::EnsureProcedure(const QString& name, const QString& body,
                                 const QString& declaration) {
    const ProcedureDefinition definition = ProcedureDefinition::Parse(name, body, declaration);
    if (engine() == Engine::Sqlite) {
        // The embedded engine has no procedures: the statement is kept here and prepared on
        // each call. One statement, as every procedure of the suite has.
        if (SplitSqlStatements(definition.BodyWith([](int) {
                return QStringLiteral("?");
            })).size() != 1) {
            throw DatabaseError(
                QStringLiteral("A stored procedure on this engine holds one statement."), body);
        }
        if (!procedures_.contains(name.toLower()))
            procedures_.insert(name.toLower(), definition);
        return;
    }
    if (ServerHasFunction(*this, name))
        return;
    QStringList types;
    for (const auto& parameter : definition.parameters)
        types << ServerType(parameter.type);
    QStringList statements;
    for (const QString& statement : SplitSqlStatements(
             definition.BodyWith([](int index) { return QStringLiteral("$%1").arg(index + 1); })))
        statements << Translate(statement);
    const QString create =
        QStringLiteral(
            "CREATE OR REPLACE FUNCTION %1(%2) RETURNS void LANGUAGE sql AS "
            "$orvo_procedure$ %3 $orvo_procedure$")
            .arg(name, types.join(QStringLiteral(", ")), statements.join(QStringLiteral("; ")));
    try {
        ExecuteTranslated(create);
    } catch (const DatabaseError&) {
        // Another station may have made it at the same moment.
        if (!ServerHasFunction(*this, name))
            throw;
    }
}

void Connection::CallProcedure(const QString& name, const QList<ProcedureArgument>& arguments) {
    if (!IsPlainProcedureName(name)) {
        throw DatabaseError(QStringLiteral("A stored procedure may not be named %1.").arg(name),
                            QString());
    }
    for (const ProcedureArgument& argument : arguments) {
        if (argument.type == ParameterType::WideText && argument.size <= 0) {
            throw DatabaseError(
                QStringLiteral("The parameter %1 of %2 has size 0.").arg(argument.name, name),
                QString());
        }
    }

    QString statement;
    QList<QVariant> values;
    if (engine() == Engine::Sqlite) {
        const auto found = procedures_.constFind(name.toLower());
        if (found == procedures_.constEnd()) {
            throw DatabaseError(QStringLiteral("The stored procedure %1 does not exist.").arg(name),
                                QString());
        }
        const ProcedureDefinition& definition = *found;
        if (definition.parameters.size() != arguments.size()) {
            throw DatabaseError(QStringLiteral("%1 takes %2 parameters; %3 were given.")
                                    .arg(name)
                                    .arg(definition.parameters.size())
                                    .arg(arguments.size()),
                                definition.body);
        }
        for (int i = 0; i < arguments.size(); ++i) {
            const auto& parameter = definition.parameters[i];
            if ((!arguments[i].name.isEmpty() &&
                 arguments[i].name.compare(parameter.name, Qt::CaseInsensitive) != 0) ||
                arguments[i].type != parameter.type) {
                throw DatabaseError(QStringLiteral("Parameter %1 of %2 is %3 %4.")
                                        .arg(i + 1)
                                        .arg(name, parameter.name, parameter.declaredType),
                                    definition.body);
            }
        }
        statement = Translate(definition.BodyWith([](int) { return QStringLiteral("?"); }));
        for (const int index : definition.placeholderOrder)
            values << arguments[index].value;
    } else {
        QStringList placeholders;
        for (const ProcedureArgument& argument : arguments) {
            placeholders << QStringLiteral("CAST(? AS %1)").arg(ServerType(argument.type));
            values << argument.value;
        }
        statement = QStringLiteral("SELECT %1(%2)").arg(name, placeholders.join(u','));
    }

    QSqlQuery query(db_);
    RequireOneStatement(statement);
    if (!query.prepare(statement)) {
        throw DatabaseError(query.lastError().databaseText().trimmed().isEmpty()
                                ? query.lastError().text()
                                : query.lastError().databaseText().trimmed(),
                            statement);
    }
    for (const QVariant& value : values)
        query.addBindValue(value);
    if (!query.exec()) {
        QString message = query.lastError().databaseText().trimmed();
        if (message.isEmpty())
            message = query.lastError().text();
        throw DatabaseError(message, statement);
    }
}

}  // namespace orvo::db
