// SPDX-License-Identifier: GPL-3.0-or-later
// JPEGs that two threads decode together: what comes out is what one has.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>
// After stdio:
#include <jpeglib.h>

#include "media/pictures/jpeg_reader.h"
#include "unit/pictures/picture_bytes.h"

namespace corvane {
namespace {

bool never() { return false; }

/// A picture with detail everywhere; across, down: how many pixels share a colour.
std::string jpegOf(int width, int height, int across, int down, int colours = 3) {
    jpeg_compress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&jpeg, &bytes, &size);
    jpeg.image_width = static_cast<JDIMENSION>(width);
    jpeg.image_height = static_cast<JDIMENSION>(height);
    jpeg.input_components = colours;
    jpeg.in_color_space = colours == 3 ? JCS_RGB : JCS_GRAYSCALE;
    jpeg_set_defaults(&jpeg);
    jpeg.comp_info[0].h_samp_factor = across;
    jpeg.comp_info[0].v_samp_factor = down;
    jpeg_start_compress(&jpeg, TRUE);
    std::vector<unsigned char> row(static_cast<std::size_t>(width * colours));
    for (int y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < row.size(); ++x)
            row[x] = static_cast<unsigned char>(x * 7 ^ static_cast<unsigned>(y) * 11);
        JSAMPROW line = row.data();
        jpeg_write_scanlines(&jpeg, &line, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    std::string file(reinterpret_cast<const char*>(bytes), size);
    std::free(bytes);
    return file;
}

PicturePixels byOne(const std::string& bytes) {
    test::Bytes file(bytes);
    return readJpegByTwo(file, {0, never}, 0);
}
PicturePixels byTwo(const std::string& bytes, double share) {
    test::Bytes file(bytes);
    return readJpegByTwo(file, {0, never}, share);
}

/// PIC-83: A JPEG that two threads decode together has the same pixels as by one, whatever its colours share
TEST(JpegByTwo, HasTheSamePixels) {
    for (const auto& [across, down] : {std::pair{1, 1}, {2, 1}, {1, 2}, {2, 2}, {4, 1}}) {
        for (const int height : {1, 15, 33, 200, 333}) {
            const std::string file = jpegOf(331, height, across, down);
            const PicturePixels one = byOne(file);
            ASSERT_EQ(one.reason, "");
            for (const double share : {0.1, 0.5, 0.7, 0.97}) {
                const PicturePixels two = byTwo(file, share);
                EXPECT_EQ(two.reason, "");
                EXPECT_TRUE(one.pixels == two.pixels)
                    << across << " by " << down << ", " << height << " rows, " << share;
            }
        }
    }
    const std::string grey = jpegOf(400, 300, 1, 1, 1);
    EXPECT_TRUE(byOne(grey).pixels == byTwo(grey, 0.5).pixels);
}

/// PIC-83
TEST(JpegByTwo, GivenUpOrCutItEndsSoon) {
    const std::string file = jpegOf(2000, 2000, 2, 2);
    for (const std::size_t length : {std::size_t{0}, std::size_t{3}, file.size() / 4, file.size() * 9 / 10}) {
        test::Bytes cut(file.substr(0, length));
        EXPECT_NE(readJpegByTwo(cut, {0, never}, 0.5).reason, "") << length;
    }
    test::Bytes whole(file);
    EXPECT_NE(readJpegByTwo(whole, {0, [] { return true; }}, 0.5).reason, "");
    int asked = 0;
    test::Bytes again(file);
    EXPECT_NE(readJpegByTwo(again, {0, [&asked] { return ++asked > 20; }}, 0.5).reason, "");
}

}  // namespace
}  // namespace corvane
