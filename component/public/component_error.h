#pragma once

#include <QString>
#include <stdexcept>

namespace orvo {

// An error the component raises to its host: a property refused, a call it cannot serve.
class ComponentError : public std::runtime_error {
public:
    explicit ComponentError(const QString& message) : std::runtime_error(message.toStdString()) {}
};

// Something asked for that is not built yet: a host operation, or a method of a public class
// whose screen has not arrived. It is thrown instead of answering something made up.
class NotImplemented : public std::logic_error {
public:
    // what: "Host operation GetFamilyID", "EditingScreen.Employer_Start".
    explicit NotImplemented(const QString& what)
        : std::logic_error((what + QStringLiteral(" is not implemented yet")).toStdString()) {}
};

}  // namespace orvo
