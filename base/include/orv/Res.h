// Res.h: a resolution, two unsigned integers for width and height.
//
//   orv::Res full(1920, 1080);
//   record.setRes("screen", full);   // "1920,1080"
#pragma once

namespace orv {

struct Res {
    unsigned int width = 0;
    unsigned int height = 0;

    Res() = default;
    Res(unsigned int width, unsigned int height) : width(width), height(height) {}

    bool operator==(Res const &other) const {
        return width == other.width && height == other.height;
    }
    bool operator!=(Res const &other) const { return !(*this == other); }
};

} // namespace orv
