// What the library prints while an object of this class lives, stream by stream.
#pragma once

#include <iostream>
#include <sstream>
#include <string>

class Capture {
  public:
    Capture()
        : out_(std::cout.rdbuf(cout.rdbuf())), err_(std::cerr.rdbuf(cerr.rdbuf())),
          log_(std::clog.rdbuf(clog.rdbuf())) {}
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;
    ~Capture() {
        std::cout.rdbuf(out_);
        std::cerr.rdbuf(err_);
        std::clog.rdbuf(log_);
    }

    std::ostringstream cout, cerr, clog;
    bool silent() const { return cout.str().empty() && cerr.str().empty() && clog.str().empty(); }

  private:
    std::streambuf *out_, *err_, *log_;
};

/// Throws away what the library prints, without any memory and from as many threads as there are.
class Silence : std::streambuf {
  public:
    Silence() : out_(std::cout.rdbuf(this)), err_(std::cerr.rdbuf(this)), log_(std::clog.rdbuf(this)) {}
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence() override {
        std::cout.rdbuf(out_);
        std::cerr.rdbuf(err_);
        std::clog.rdbuf(log_);
    }

  private:
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
    std::streambuf *out_, *err_, *log_;
};
