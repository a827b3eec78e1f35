#pragma once

#include <QString>

namespace orvo::component {

// How the start methods read the text they are given.

// Upper-cases the first letter and every letter after a blank, after trimming the blanks at
// either end; the other letters stay as they are.
QString CapitalizeWords(const QString& text);

// The number a text starts with, as the suite reads an id out of a command: leading blanks and a
// sign are taken, reading stops at the first other character, and no number at all is 0.
int Val(const QString& text);

}  // namespace orvo::component
