#pragma once

class QByteArray;
class QString;

/// Fails the test unless the file holds exactly this text, which the product gave. With VERIDAN_UPDATE_FILES=1 in the
/// environment the file is written anew instead.
void ExpectGeneratedFile(const QString& path, const QByteArray& text);
