// What the library prints: kept stream by stream, or thrown away.
#pragma once

#include <iostream>
#include <sstream>
#include <string>

/// Sends what the three streams print elsewhere while it lives.
class Redirection {
  public:
    Redirection(std::streambuf* out, std::streambuf* err, std::streambuf* log)
        : before_{std::cout.rdbuf(out), std::cerr.rdbuf(err), std::clog.rdbuf(log)} {}
    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;
    ~Redirection() { std::cout.rdbuf(before_[0]), std::cerr.rdbuf(before_[1]), std::clog.rdbuf(before_[2]); }

  private:
    std::streambuf* before_[3];
};

struct Capture {
    std::ostringstream cout, cerr, clog;
    Redirection to_here{cout.rdbuf(), cerr.rdbuf(), clog.rdbuf()};
    bool silent() const { return (cout.str() + cerr.str() + clog.str()).empty(); }
};

/// Needs no memory and serves as many threads as there are.
class Silence : std::streambuf {
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
    Redirection to_here_{this, this, this};
};
