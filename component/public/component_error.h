#pragma once

#include <QString>
#include <stdexcept>

namespace orvo {

// An error the component raises to its host: a property refused, a call it cannot serve.
class ComponentError : public std::runtime_error {
public:
    explicit ComponentError(const QString& message) : std::runtime_error(message.toStdString()) {}
};

// A method of a public class whose screen has not been built yet. It arrives with its screen.
class NotImplementedYet : public std::logic_error {
public:
    // method as "EditingScreen.Employer_Start".
    explicit NotImplementedYet(const QString& method)
        : std::logic_error((method + QStringLiteral(" is not implemented yet")).toStdString()) {}
};

}  // namespace orvo
