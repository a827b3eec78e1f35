#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace orvo::db {

// The types a stored procedure's parameters take here.
enum class ParameterType { Integer, WideText };

// One input value of a procedure call, in the order of the procedure's declaration. A wide text
// goes with its size, its length in characters; a size of 0 is refused, as the suite's data
// layer always did, so callers send an empty text as one blank.
struct ProcedureArgument {
    QString name;  // "@RecordID"; checked against the declaration
    ParameterType type = ParameterType::Integer;
    QVariant value;
    qsizetype size = 0;

    static ProcedureArgument Integer(const QString& name, qint64 value);
    static ProcedureArgument WideText(const QString& name, const QString& value);
};

// A procedure as the suite declares it: a body in the server dialect naming its parameters as
// @Name, and a declaration "(@RecordID int, @TextMessage nText, ...)".
struct ProcedureDefinition {
    struct Parameter {
        QString name;  // with the @
        ParameterType type = ParameterType::Integer;
        QString declaredType;
    };

    QString name;
    QString body;
    QList<Parameter> parameters;
    // The body cut at each @Name outside quotes: the pieces between, and the index of the
    // parameter that stands after each piece but the last.
    QStringList bodyPieces;
    QList<int> placeholderOrder;

    // Throws DatabaseError on a declaration it cannot read, or a body naming a parameter that
    // is not declared.
    static ProcedureDefinition Parse(const QString& name, const QString& body,
                                     const QString& declaration);
    int IndexOf(const QString& parameterName) const;  // -1 when not declared
    // The body with each parameter written as placeholder(index).
    template <class Placeholder>
    QString BodyWith(Placeholder placeholder) const {
        QString text = bodyPieces.value(0);
        for (int i = 0; i < placeholderOrder.size(); ++i)
            text += placeholder(placeholderOrder[i]) + bodyPieces.value(i + 1);
        return text;
    }
};

// A procedure name made safe for the engine: letters, digits and underscores only.
bool IsPlainProcedureName(const QString& name);

}  // namespace orvo::db
