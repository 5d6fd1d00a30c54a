#define ZLIB_CONST // the input is only read
#include "platform/qt/Gunzip.h"

#include <zlib.h>

#include <algorithm>
#include <array>

namespace larkspool {

namespace {

using Outcome = Gunzipped::Outcome;

// Up to the end of the data, which may be several gzip streams in a row.
Outcome Inflate(z_stream& stream, QByteArray& bytes, qsizetype most) {
    std::array<char, 16384> piece; // NOLINT(*-member-init): written before it is read
    int result = Z_OK;
    while (result == Z_OK) {
        stream.next_out = reinterpret_cast<Bytef*>(piece.data());
        stream.avail_out = static_cast<uInt>(piece.size());
        result = inflate(&stream, Z_NO_FLUSH);
        const auto count = static_cast<qsizetype>(piece.size() - stream.avail_out);
        if (count > most - bytes.size()) {
            return Outcome::TooLarge;
        }
        bytes.append(piece.data(), count);
        if (result == Z_STREAM_END && stream.avail_in > 0) {
            result = inflateReset(&stream);
        }
    }
    // Z_BUF_ERROR: no progress is possible without more input.
    return result == Z_STREAM_END  ? Outcome::Whole
           : result == Z_BUF_ERROR ? Outcome::Cut
                                   : Outcome::Broken;
}

} // namespace

Gunzipped Gunzip(const QByteArray& packed, qsizetype most) {
    constexpr int GzipAlone = 16 + MAX_WBITS;
    z_stream stream = {};
    stream.next_in = reinterpret_cast<const Bytef*>(packed.constData());
    stream.avail_in = static_cast<uInt>(packed.size());
    Gunzipped unpacked;
    if (inflateInit2(&stream, GzipAlone) == Z_OK) {
        unpacked.outcome = Inflate(stream, unpacked.bytes, most);
        inflateEnd(&stream);
    }
    return unpacked;
}

} // namespace larkspool
