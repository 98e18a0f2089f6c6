// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/pictures/jpeg_reader.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <csetjmp>
#include <cstdio>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>
// After stdio:
#include <jerror.h>
#include <jpeglib.h>

#include "pictures/upright_rows.h"
#include "workers/worker.h"

namespace corvane {

namespace {

constexpr std::int64_t kPiece = 65536;
constexpr int kBytesOfPixel = 4;
constexpr unsigned kEighths = 8;
constexpr std::uint32_t kOpaque = 0xFF000000U;

/// The picture that several readers put their rows into.
using Rows = std::shared_ptr<UprightRows>;

/// One decoding, of the whole or of a part. The library comes back from an error by a long jump into read(): what needs
/// to be destroyed lives outside of it, here.
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

    /// Called with the rows as soon as there are some to be put in, and how many there will be; returns how many of
    /// them this one reads.
    using Divide = std::function<int(const Rows& rows, int count)>;

    /// `others`: whether those that read the other rows have done so, when its own are read.
    PicturePixels read(const Divide& divide = {}, const std::function<bool()>& others = {}) {
        switch (run(divide)) {
            case Outcome::Read:
                return !others || others() ? rows_->take() : PicturePixels::damaged();
            case Outcome::TooLarge:
                return PicturePixels::tooLarge(size(), lacksRoom_);
            default:
                return failure();
        }
    }
    /// Reads from a row on into the rows of another reader of the same file. False: it has failed.
    bool readInto(const Rows& rows, int from) {
        rows_ = rows;
        first_ = from;
        return run({}) == Outcome::Read;
    }

private:
    enum class Outcome { Read, TooLarge, Failed };

    /// What it calls is not put in line, so that a jump back finds nothing half done here.
    Outcome run(const Divide& divide) {
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
        beginRows(divide);
        if (first_ > 0) jpeg_skip_scanlines(&jpeg_, static_cast<JDIMENSION>(first_));
        while (jpeg_.output_scanline < end_) readRow();
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

    [[gnu::noinline]] void beginRows(const Divide& divide) {
        const PictureSize held{static_cast<int>(jpeg_.output_width), static_cast<int>(jpeg_.output_height)};
        if (!rows_) rows_ = std::make_shared<UprightRows>(size(), held, orientationOf(file_));
        row_.resize(jpeg_.output_width);
        end_ = divide ? static_cast<JDIMENSION>(divide(rows_, held.height)) : jpeg_.output_height;
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
    Rows rows_;
    int first_ = 0;  ///< row that it reads
    JDIMENSION end_ = 0;
    std::vector<std::uint32_t> row_;
};

class WholeBytes : public PictureBytes {
public:
    explicit WholeBytes(std::shared_ptr<const std::string> bytes) : bytes_(std::move(bytes)) {}
    std::int64_t size() override { return static_cast<std::int64_t>(bytes_->size()); }
    std::string part(std::int64_t from, std::int64_t count) override {
        return from < size() ? bytes_->substr(static_cast<std::size_t>(from), static_cast<std::size_t>(count)) : "";
    }

private:
    std::shared_ptr<const std::string> bytes_;
};

/// The lower part of a picture on its way; held by the thread that reads it as well.
struct LowerPart {
    std::shared_ptr<const std::string> bytes;
    std::int64_t held = 0;
    Rows rows;
    int first = 0;
    std::atomic<bool> givenUp{false};
    bool runs = false;    ///< in a thread of its own
    bool isRead = false;  ///< known when that has ended

    void read() {
        WholeBytes file(bytes);
        const DecodingBounds bounds{held, [this] { return givenUp.load(); }};
        isRead = JpegReader(file, bounds).readInto(rows, first);
    }
};

/// Worth a second thread: its lower rows can be reached without the colours of the upper ones.
bool isWorthTwo(PictureBytes& file) {
    constexpr std::int64_t kLeastPixels = 1'000'000;
    constexpr std::int64_t kMostBytes = std::int64_t{32} << 20;
    if (sysconf(_SC_NPROCESSORS_ONLN) < 2 || file.size() > kMostBytes) return false;
    const JpegWork work = jpegWorkOf(file);
    return work.scans == 1 && work.size.pixels() >= kLeastPixels;
}

}  // namespace

PicturePixels readJpeg(PictureBytes& file, const DecodingBounds& bounds) {
    constexpr double kUpperShare = 0.7;  // the lower part must unpack the upper rows' codes as well
    return isWorthTwo(file) ? readJpegByTwo(file, bounds, kUpperShare) : JpegReader(file, bounds).read();
}

PicturePixels readJpegByTwo(PictureBytes& file, const DecodingBounds& bounds, double upperShare) {
    constexpr int kRowsOfBlocks = 16;
    constexpr std::chrono::milliseconds kLook{20};
    const auto lower = std::make_shared<LowerPart>();
    lower->bytes = std::make_shared<const std::string>(file.part(0, file.size()));
    lower->held = bounds.held;
    Worker worker;
    const auto divide = [&](const Rows& rows, int count) {
        lower->rows = rows;
        lower->first = static_cast<int>(count * upperShare) / kRowsOfBlocks * kRowsOfBlocks;
        if (lower->first <= 0) return count;
        lower->runs = worker.start([lower](const Worker::GiveUp& /*it has its own*/) { lower->read(); });
        return lower->runs ? lower->first : count;
    };
    const auto others = [&] {
        while (lower->runs && !worker.wait(kLook)) {
            if (bounds.givenUp()) return false;
        }
        return !lower->runs || lower->isRead;
    };
    WholeBytes whole(lower->bytes);
    PicturePixels result = JpegReader(whole, bounds).read(divide, others);
    lower->givenUp = true;
    return result;
}

}  // namespace corvane
