#include "read/bytes.hpp"

#include "read/refusal.hpp"
#include "words/text.hpp"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <limits>
#include <system_error>

namespace loopwise::read {
namespace {

constexpr std::string_view gzip_mark = "\x1f\x8b";
constexpr int gzip_window = 15 + 16; // 15: the largest window; 16: with the header and checksum of gzip

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
            if (state == Z_BUF_ERROR) refuse("truncated gzip file; get it again");
            if (state != Z_OK && state != Z_STREAM_END)
                refuse("damaged gzip file" + (stream_.msg == nullptr ? "" : ": " + std::string(stream_.msg)));
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
    if (path == words::standard_input) return all_of(std::cin);
    if (std::filesystem::is_directory(path)) refuse("is a directory, not a file");
    std::ifstream file(path, std::ios::binary);
    if (!file) refuse("cannot be opened: " + std::generic_category().message(errno));
    return all_of(file);
}

} // namespace

std::string unpacked(std::string_view gzipped) {
    std::string bytes;
    Inflation inflation;
    do gzipped = inflation.member(gzipped, bytes);
    while (gzipped.starts_with(gzip_mark));
    // Tape archives are padded with zeros.
    if (gzipped.find_first_not_of('\0') != std::string_view::npos)
        refuse("damaged gzip file: other bytes follow its end");
    return bytes;
}

std::string read_bytes(const std::string& path) {
    std::string bytes = raw_bytes(path);
    if (bytes.starts_with(gzip_mark)) return unpacked(bytes);
    if (path.ends_with(".gz")) refuse("is named .gz but is not a gzip file");
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
