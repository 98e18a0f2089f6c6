// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/pictures/jpeg_reader.h"

#include <array>
#include <csetjmp>
#include <cstdio>
#include <new>
#include <optional>
#include <string>
// After stdio:
#include <jerror.h>
#include <jpeglib.h>

#include "pictures/upright_rows.h"

namespace corvane {

namespace {

constexpr std::int64_t kPiece = 65536;
constexpr int kBytesOfPixel = 4;
constexpr unsigned kEighths = 8;
constexpr std::uint32_t kOpaque = 0xFF000000U;

/// One decoding. The library comes back from an error by a long jump into read(): what needs to be destroyed lives
/// outside of it, here.
class JpegReader {
public:
    JpegReader(PictureBytes& file, const DecodingBounds& bounds) : file_(file), bounds_(bounds) {
        jpeg_.err = jpeg_std_error(&errors_);
        jpeg_.client_data = this;
        errors_.error_exit = [](j_common_ptr jpeg) { std::longjmp(self(jpeg).back_, 1); };
        errors_.emit_message = [](j_common_ptr /*jpeg*/, int /*level*/) {};
        errors_.output_message = [](j_common_ptr /*jpeg*/) {};
        source_.init_source = [](j_decompress_ptr /*jpeg*/) {};
        source_.fill_input_buffer = [](j_decompress_ptr jpeg) { return self(jpeg).fill(); };
        source_.skip_input_data = [](j_decompress_ptr jpeg, long count) { self(jpeg).skip(count); };
        source_.resync_to_restart = jpeg_resync_to_restart;
        source_.term_source = [](j_decompress_ptr /*jpeg*/) {};
        progress_.progress_monitor = [](j_common_ptr jpeg) { self(jpeg).watch(); };
    }
    JpegReader(const JpegReader&) = delete;
    JpegReader& operator=(const JpegReader&) = delete;
    ~JpegReader() {
        if (created_) jpeg_destroy_decompress(&jpeg_);
    }

    PicturePixels read() {
        switch (run()) {
            case Outcome::Read:
                return rows_->take();
            case Outcome::TooLarge:
                return PicturePixels::tooLarge(size(), lacksRoom_);
            default:
                return failure();
        }
    }

private:
    enum class Outcome { Read, TooLarge, Failed };

    /// What it calls is not put in line, so that a jump back finds nothing half done here.
    Outcome run() {
        if (setjmp(back_) != 0) return Outcome::Failed;
        jpeg_create_decompress(&jpeg_);
        created_ = true;
        jpeg_.src = &source_;
        jpeg_.progress = &progress_;
        jpeg_.mem->max_memory_to_use = kMaxWhileDecoding * kBytesOfPixel;
        jpeg_read_header(&jpeg_, TRUE);
        if (!findRoom()) return Outcome::TooLarge;
        chooseColours();
        jpeg_start_decompress(&jpeg_);
        beginRows();
        while (jpeg_.output_scanline < jpeg_.output_height) readRow();
        return Outcome::Read;
    }

    template <class Jpeg>
    static JpegReader& self(Jpeg jpeg) {
        return *static_cast<JpegReader*>(jpeg->client_data);
    }
    PictureSize size() const { return {static_cast<int>(jpeg_.image_width), static_cast<int>(jpeg_.image_height)}; }

    /// Takes the largest reduction for which there is room. False: there is none.
    [[gnu::noinline]] bool findRoom() {
        if (size().pixels() > kMaxJpegPixels) return false;
        const std::int64_t work = workPixels();
        if (const auto eighths = reduction(roomForPixels(bounds_.held, work))) {
            jpeg_.scale_num = *eighths;
            jpeg_.scale_denom = kEighths;
            return true;
        }
        lacksRoom_ = reduction(roomForPixels(0, work)).has_value();
        return false;
    }
    std::optional<unsigned> reduction(std::int64_t room) const {
        for (unsigned eighths = kEighths; eighths > 0; --eighths) {
            const auto reduced = [eighths](unsigned side) {
                return std::int64_t{(side * eighths + kEighths - 1) / kEighths};
            };
            if (reduced(jpeg_.image_width) * reduced(jpeg_.image_height) <= room) return eighths;
        }
        return std::nullopt;
    }
    /// What the decoder takes beside the picture, in pixels' worth: the coefficients of the whole where it comes in
    /// several scans.
    std::int64_t workPixels() {
        if (jpeg_has_multiple_scans(&jpeg_) == FALSE) return 0;
        std::int64_t coefficients = 0;
        for (int i = 0; i < jpeg_.num_components; ++i) {
            const jpeg_component_info& component = jpeg_.comp_info[i];
            coefficients +=
                std::int64_t{component.width_in_blocks} * std::int64_t{component.height_in_blocks} * DCTSIZE2;
        }
        return coefficients * static_cast<std::int64_t>(sizeof(JCOEF)) / kBytesOfPixel;
    }

    void chooseColours() {
        const bool ink = jpeg_.jpeg_color_space == JCS_CMYK || jpeg_.jpeg_color_space == JCS_YCCK;
        jpeg_.out_color_space = ink ? JCS_CMYK : JCS_EXT_BGRX;
    }

    [[gnu::noinline]] void beginRows() {
        const PictureSize held{static_cast<int>(jpeg_.output_width), static_cast<int>(jpeg_.output_height)};
        rows_.emplace(size(), held, orientationOf(file_));
        row_.resize(jpeg_.output_width);
    }
    [[gnu::noinline]] void readRow() {
        const int y = static_cast<int>(jpeg_.output_scanline);
        auto* bytes = reinterpret_cast<JSAMPROW>(row_.data());
        if (jpeg_read_scanlines(&jpeg_, &bytes, 1) != 1) return;
        if (jpeg_.out_color_space == JCS_CMYK) {
            mixInk();
        } else {
            for (std::uint32_t& pixel : row_) pixel |= kOpaque;
        }
        rows_->put(y, row_.data());
    }
    /// Programs that write such a mark store how much of each ink is missing.
    void mixInk() {
        const bool missing = jpeg_.saw_Adobe_marker != FALSE;
        for (std::uint32_t& pixel : row_) {
            std::array<std::uint32_t, 4> ink{pixel & 0xFF, pixel >> 8 & 0xFF, pixel >> 16 & 0xFF, pixel >> 24 & 0xFF};
            if (!missing) {
                for (std::uint32_t& one : ink) one = 255 - one;
            }
            const auto light = [&ink](std::size_t i) { return ink[i] * ink[3] / 255; };
            pixel = kOpaque | light(0) << 16U | light(1) << 8U | light(2);
        }
    }

    boolean fill() {
        bool got = false;
        try {
            piece_ = file_.part(at_, kPiece);
            got = !piece_.empty() && !bounds_.givenUp();
        } catch (const std::bad_alloc&) {  // which must not pass through the library
        }
        if (!got) std::longjmp(back_, 1);
        at_ += static_cast<std::int64_t>(piece_.size());
        source_.next_input_byte = reinterpret_cast<const JOCTET*>(piece_.data());
        source_.bytes_in_buffer = piece_.size();
        return TRUE;
    }
    void skip(long count) {
        if (count <= 0) return;
        const auto bytes = static_cast<std::size_t>(count);
        if (bytes <= source_.bytes_in_buffer) {
            source_.next_input_byte += bytes;
            source_.bytes_in_buffer -= bytes;
            return;
        }
        at_ += static_cast<std::int64_t>(bytes - source_.bytes_in_buffer);
        source_.bytes_in_buffer = 0;
    }
    /// Called for each row of blocks of each scan.
    void watch() {
        tooManyScans_ = jpeg_.input_scan_number > kMostScans;
        if (tooManyScans_ || bounds_.givenUp()) std::longjmp(back_, 1);
    }

    PicturePixels failure() const {
        if (tooManyScans_) return PicturePixels::failed("The picture is damaged: it has too many layers.");
        if (errors_.msg_code == JERR_OUT_OF_MEMORY || errors_.msg_code == JERR_NO_BACKING_STORE) {
            return PicturePixels::failed("There is not enough memory for the picture.");
        }
        return PicturePixels::damaged();
    }

    PictureBytes& file_;
    const DecodingBounds& bounds_;
    jpeg_decompress_struct jpeg_{};
    jpeg_error_mgr errors_{};
    jpeg_source_mgr source_{};
    jpeg_progress_mgr progress_{};
    std::jmp_buf back_{};
    bool created_ = false;
    bool tooManyScans_ = false;
    bool lacksRoom_ = false;  ///< because of other pictures
    std::int64_t at_ = 0;     ///< of the file, behind the piece
    std::string piece_;
    std::optional<UprightRows> rows_;
    std::vector<std::uint32_t> row_;
};

}  // namespace

PicturePixels readJpeg(PictureBytes& file, const DecodingBounds& bounds) { return JpegReader(file, bounds).read(); }

}  // namespace corvane
