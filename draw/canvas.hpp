// Pieces of SVG, and labels that find a free place.
#pragma once

#include <string>
#include <vector>

namespace loopwise::draw {

/// A place in a picture, in pixels from its upper left corner.
struct Spot {
    double x = 0.0;
    double y = 0.0;
};

/// With one digit after the point.
std::string number(double value);

/// The text with the characters that mean something in XML written as entities.
std::string escaped(const std::string& text);

std::string line(Spot from, Spot to, const std::string& attributes);
std::string disc(Spot centre, double radius, const std::string& attributes);
std::string words(Spot at, const std::string& text, const std::string& attributes);

/// Finds places for labels inside a frame so that they cover each other and what is drawn little.
class Labels {
  public:
    Labels(double width, double height) : width_(width), height_(height) {}

    /// Later labels keep away from this line.
    void avoid(Spot from, Spot to);
    /// No label goes where this box is.
    void keep_off(Spot upper_left, Spot lower_right);
    /// The label's text, put beside the spot, which a disc of the radius covers; nothing where there is no
    /// place that no other label has.
    std::string beside(Spot spot, double radius, const std::string& text, double size, const std::string& attributes);

  private:
    struct Box {
        Spot centre;
        double half_width, half_height;
    };
    double cost(const Box& box) const;

    double width_, height_;
    std::vector<Spot> drawn_;
    std::vector<Box> placed_;
};

} // namespace loopwise::draw
