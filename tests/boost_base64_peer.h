#pragma once
// Boost's archive iterators as an independent Base64 codec, the peer that the Base64 tests check
// against and the benchmark measures against. Not part of the library.

#include <cstddef>
#include <string>
#include <vector>

#include <boost/archive/iterators/base64_from_binary.hpp>
#include <boost/archive/iterators/binary_from_base64.hpp>
#include <boost/archive/iterators/transform_width.hpp>

namespace boost_base64_peer {

using Bytes = std::vector<unsigned char>;

// The iterator pipeline leaves the padding to its caller.
inline std::string encode(const Bytes& bytes) {
    using namespace boost::archive::iterators;
    using Encoder = base64_from_binary<transform_width<Bytes::const_iterator, 6, 8>>;
    std::string text(Encoder(bytes.begin()), Encoder(bytes.end()));
    text.append((3 - bytes.size() % 3) % 3, '=');
    return text;
}

// For well-formed text: padding reads as zero bits, and the surplus bytes are cut.
inline Bytes decode(std::string text) {
    using namespace boost::archive::iterators;
    using Decoder = transform_width<binary_from_base64<std::string::const_iterator>, 8, 6>;
    std::size_t padding = 0;
    while (!text.empty() && text.back() == '=') {
        text.pop_back();
        ++padding;
    }
    text.append(padding, 'A');
    Bytes bytes(Decoder(text.cbegin()), Decoder(text.cend()));
    bytes.resize(bytes.size() - padding);
    return bytes;
}

}  // namespace boost_base64_peer
