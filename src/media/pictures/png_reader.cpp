// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/pictures/png_reader.h"

#include <png.h>

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstring>
#include <new>
#include <optional>
#include <string>

namespace corvane {

namespace {

constexpr std::int64_t kPiece = 65536;

/// Ancillary parts that change nothing of what is shown.
constexpr std::array<png_byte, 85> kPassedOver = {
    'b', 'K', 'G', 'D', 0,   'c', 'H', 'R', 'M', 0,   'e', 'X', 'I', 'f', 0,   'g', 'A', 'M', 'A', 0,   'h', 'I',
    'S', 'T', 0,   'i', 'C', 'C', 'P', 0,   'i', 'T', 'X', 't', 0,   'o', 'F', 'F', 's', 0,   'p', 'C', 'A', 'L',
    0,   'p', 'H', 'Y', 's', 0,   's', 'B', 'I', 'T', 0,   's', 'C', 'A', 'L', 0,   's', 'P', 'L', 'T', 0,   's',
    'R', 'G', 'B', 0,   't', 'E', 'X', 't', 0,   't', 'I', 'M', 'E', 0,   'z', 'T', 'X', 't', 0};
constexpr std::size_t kNameBytes = 5;

/// One decoding. The library comes back from an error by a long jump into read(): what needs to be destroyed lives
/// outside of it, here.
class PngReader {
public:
    PngReader(PictureBytes& file, const DecodingBounds& bounds) : file_(file), bounds_(bounds) {}
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;
    ~PngReader() { png_destroy_read_struct(&png_, &info_, nullptr); }

    PicturePixels read() {
        png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, this, &failed, &warned);
        if (png_ == nullptr || (info_ = png_create_info_struct(png_)) == nullptr) throw std::bad_alloc();
        switch (run()) {
            case Outcome::Rows:
                return rows_->take();
            case Outcome::Passes:
                passes_.seeThrough = std::any_of(passes_.pixels.begin(), passes_.pixels.end(),
                                                 [](std::uint32_t pixel) { return pixel >> 24U != 255; });
                return std::move(passes_);
            case Outcome::TooLarge:
                return PicturePixels::tooLarge(size_);
            default:
                return PicturePixels::damaged();
        }
    }

private:
    enum class Outcome { Rows, Passes, TooLarge, Failed };

    /// What it calls is not put in line, so that a jump back finds nothing half done here.
    Outcome run() {
        if (setjmp(back_) != 0) return Outcome::Failed;
        png_set_read_fn(png_, this, &give);
        png_set_user_limits(png_, kMaxPictureSide, kMaxPictureSide);
        png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, kPassedOver.data(),
                                    static_cast<int>(kPassedOver.size() / kNameBytes));
        png_read_info(png_, info_);
        size_ = {static_cast<int>(png_get_image_width(png_, info_)),
                 static_cast<int>(png_get_image_height(png_, info_))};
        if (size_.pixels() > kMaxPicturePixels) return Outcome::TooLarge;
        held_ = sizeToHold(size_, bounds_.held);
        askForColours();
        if (!makeRow()) return Outcome::Failed;
        if (png_get_interlace_type(png_, info_) != PNG_INTERLACE_NONE) return readPasses(), Outcome::Passes;
        readRows();
        return Outcome::Rows;
    }

    static PngReader& self(png_structp png) { return *static_cast<PngReader*>(png_get_error_ptr(png)); }
    [[noreturn]] static void failed(png_structp png, png_const_charp /*why*/) { std::longjmp(self(png).back_, 1); }
    static void warned(png_structp /*png*/, png_const_charp /*what*/) {}
    static void give(png_structp png, png_bytep to, std::size_t count) {
        if (!self(png).copy(to, count)) png_error(png, "");
    }
    bool copy(png_bytep to, std::size_t count) {
        while (count > 0) {
            if (taken_ == piece_.size()) {
                piece_.clear();
                try {
                    piece_ = file_.part(at_, kPiece);
                } catch (const std::bad_alloc&) {  // which must not pass through the library
                }
                at_ += static_cast<std::int64_t>(piece_.size());
                taken_ = 0;
                if (piece_.empty() || bounds_.givenUp()) return false;
            }
            const std::size_t part = std::min(count, piece_.size() - taken_);
            std::memcpy(to, piece_.data() + taken_, part);
            taken_ += part;
            to += part;
            count -= part;
        }
        return true;
    }

    /// Four bytes a pixel, whatever the file has.
    void askForColours() {
        png_set_expand(png_);
        png_set_scale_16(png_);
        png_set_gray_to_rgb(png_);
        png_set_bgr(png_);
        png_set_filler(png_, 0xFF, PNG_FILLER_AFTER);
        png_read_update_info(png_, info_);
    }
    [[gnu::noinline]] bool makeRow() {
        row_.resize(static_cast<std::size_t>(size_.width));
        return png_get_rowbytes(png_, info_) == row_.size() * sizeof(std::uint32_t);
    }
    [[gnu::noinline]] void readRows() {
        rows_.emplace(size_, held_);
        for (int y = 0; y < size_.height; ++y) {
            readRow(size_.width);
            rows_->put(y, row_.data());
        }
    }
    void readRow(int width) {
        if (bounds_.givenUp()) std::longjmp(back_, 1);
        png_read_row(png_, reinterpret_cast<png_bytep>(row_.data()), nullptr);
        for (std::size_t x = 0; x < static_cast<std::size_t>(width); ++x) {
            const std::uint32_t pixel = row_[x], alpha = pixel >> 24U;
            if (alpha == 255) continue;
            const auto times = [&](unsigned shift) { return ((pixel >> shift & 0xFFU) * alpha + 127) / 255 << shift; };
            row_[x] = alpha << 24U | times(16) | times(8) | times(0);
        }
    }

    /// Its rows come coarse at first: each pixel that is held is taken from one of the file's.
    [[gnu::noinline]] void readPasses() {
        passes_.full = size_;
        passes_.held = held_;
        passes_.pixels.resize(static_cast<std::size_t>(held_.pixels()));
        for (int pass = 0; pass < PNG_INTERLACE_ADAM7_PASSES; ++pass) {
            const int width = static_cast<int>(PNG_PASS_COLS(static_cast<png_uint_32>(size_.width), pass));
            const int height = static_cast<int>(PNG_PASS_ROWS(static_cast<png_uint_32>(size_.height), pass));
            for (int i = 0; width > 0 && i < height; ++i) {
                readRow(width);
                takePassRow(pass, width, static_cast<int>(PNG_ROW_FROM_PASS_ROW(i, pass)));
            }
        }
    }
    void takePassRow(int pass, int width, int y) {
        const int row = heldPlace(y, size_.height, held_.height);
        if (row < 0) return;
        std::uint32_t* const to = passes_.pixels.data() + static_cast<std::ptrdiff_t>(row) * held_.width;
        for (int i = 0; i < width; ++i) {
            const int x = static_cast<int>(PNG_COL_FROM_PASS_COL(i, pass));
            const int column = heldPlace(x, size_.width, held_.width);
            if (column >= 0) to[column] = row_[static_cast<std::size_t>(i)];
        }
    }
    /// The place that takes its pixel from there; -1: none does.
    static int heldPlace(int place, int full, int held) {
        const auto at = static_cast<int>((static_cast<std::int64_t>(place) * held + full - 1) / full);
        return at < held && static_cast<std::int64_t>(at) * full / held == place ? at : -1;
    }

    PictureBytes& file_;
    const DecodingBounds& bounds_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    std::jmp_buf back_{};
    std::int64_t at_ = 0;  ///< of the file, behind the piece
    std::string piece_;
    std::size_t taken_ = 0;  ///< bytes of the piece
    PictureSize size_, held_;
    std::vector<std::uint32_t> row_;
    std::optional<ReducedRows> rows_;
    PicturePixels passes_;
};

}  // namespace

PicturePixels readPng(PictureBytes& file, const DecodingBounds& bounds) { return PngReader(file, bounds).read(); }

}  // namespace corvane
