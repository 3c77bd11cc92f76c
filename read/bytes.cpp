#include "read/bytes.hpp"

#include "read/refusal.hpp"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <limits>

namespace loopwise::read {
namespace {

constexpr std::string_view gzip_mark = "\x1f\x8b";
constexpr int gzip_window = 15 + 16; // the largest window; gzip's frame and checksum are required

class Inflation {
  public:
    Inflation() {
        if (inflateInit2(&stream_, gzip_window) != Z_OK) throw std::bad_alloc();
    }
    ~Inflation() { inflateEnd(&stream_); }
    Inflation(const Inflation&) = delete;
    Inflation& operator=(const Inflation&) = delete;

    /// Unpacks one member and returns what follows it.
    std::string_view member(std::string_view packed, std::string& into) {
        inflateReset(&stream_);
        for (int state = Z_OK; state != Z_STREAM_END;) {
            constexpr std::size_t most = std::numeric_limits<uInt>::max();
            const auto piece = static_cast<uInt>(std::min(packed.size(), most));
            // zlib does not write to its input.
            stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
            stream_.avail_in = piece;
            stream_.next_out = reinterpret_cast<Bytef*>(buffer_.data());
            stream_.avail_out = static_cast<uInt>(buffer_.size());
            state = inflate(&stream_, Z_NO_FLUSH);
            packed.remove_prefix(piece - stream_.avail_in);
            into.append(buffer_.data(), buffer_.size() - stream_.avail_out);
            if (state == Z_BUF_ERROR) refuse("is a gzipped file that is cut off");
            if (state != Z_OK && state != Z_STREAM_END)
                refuse("is a damaged gzipped file" +
                       (stream_.msg == nullptr ? "" : ": " + std::string(stream_.msg)));
        }
        return packed;
    }

  private:
    z_stream stream_{};
    std::array<char, 1 << 16> buffer_;
};

std::string all_of(std::istream& in) {
    std::string bytes{std::istreambuf_iterator<char>(in), {}};
    if (in.bad()) refuse("cannot be read");
    return bytes;
}

std::string raw_bytes(const std::string& path) {
    if (path == standard_input) return all_of(std::cin);
    if (std::filesystem::is_directory(path)) refuse("is a directory");
    std::ifstream file(path, std::ios::binary);
    if (!file) refuse("cannot be opened");
    return all_of(file);
}

} // namespace

std::string unpacked(std::string_view gzipped) {
    std::string bytes;
    Inflation inflation;
    do gzipped = inflation.member(gzipped, bytes);
    while (gzipped.starts_with(gzip_mark));
    // Archives on tape are filled up with zeros.
    if (gzipped.find_first_not_of('\0') != std::string_view::npos)
        refuse("has something after the end of its gzipped part");
    return bytes;
}

std::string read_bytes(const std::string& path) {
    std::string bytes = raw_bytes(path);
    if (bytes.starts_with(gzip_mark)) return unpacked(bytes);
    if (path.ends_with(".gz")) refuse("is no gzipped file");
    return bytes;
}

std::string with_line_feeds(std::string text) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        text[kept++] = text[i] == '\r' ? '\n' : text[i];
    }
    text.resize(kept);
    return text;
}

} // namespace loopwise::read
