#pragma once

#include <QByteArray>

namespace larkspool {

struct Gunzipped {
    enum class Outcome { Whole, Cut, Broken, TooLarge };

    Outcome outcome = Outcome::Broken;
    QByteArray bytes; // those of a whole one; of any other perhaps a part
};

// Unpacks gzip data to at most so many bytes. Only what its checksum confirms is whole.
Gunzipped Gunzip(const QByteArray& packed, qsizetype most);

} // namespace larkspool
