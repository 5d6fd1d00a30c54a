#pragma once

#include <QByteArray>

namespace larkspool {

struct Gunzipped {
    enum class Outcome { Whole, Cut, Broken, TooLarge };

    Outcome outcome = Outcome::Broken;
    QByteArray bytes; // all of them if whole; otherwise perhaps a part
};

// Unpacks gzip data to at most this many bytes. Only data with a correct checksum is whole.
Gunzipped Gunzip(const QByteArray& packed, qsizetype most);

} // namespace larkspool
