#pragma once

#include <QString>

/// A string's UTF-8 text; also one that begins with U+FEFF, which Qt takes for a mark of the encoding and drops.
inline QString FromUtf8(const char* text, int size)
{
    const QString string = QString::fromUtf8(text, size);
    return size >= 3 && text[0] == '\xEF' && text[1] == '\xBB' && text[2] == '\xBF'
               ? QChar(QChar::ByteOrderMark) + string
               : string;
}
