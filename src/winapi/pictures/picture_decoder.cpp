// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/pictures/picture_decoder.h"

#include "winapi/api.h"
// After windows.h:
#include <wincodec.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <filesystem>
#include <fstream>

#include "pictures/bitmap_picture.h"
#include "pictures/byte_walk.h"
#include "pictures/gif_frames.h"
#include "pictures/picture_budget.h"
#include "pictures/picture_check.h"
#include "pictures/picture_file.h"
#include "pictures/upright_rows.h"
#include "winapi/files/plain_file.h"
#include "winapi/movies/com_pointer.h"
#include "winapi/movies/source_transform.h"
#include "winapi/text.h"

namespace corvane {

namespace {

using Pixels = BitmapPicture::Pixels;

std::atomic<std::int64_t> heldByAll{0};

/// A decoded picture, counted as long as it lives.
class DecodedPicture : public BitmapPicture {
public:
    DecodedPicture(int heldWidth, int heldHeight, Pixels pixels, int fullWidth, int fullHeight)
        : BitmapPicture(heldWidth, heldHeight, std::move(pixels), fullWidth, fullHeight) {
        heldByAll += count();
    }
    ~DecodedPicture() override { heldByAll -= count(); }

private:
    std::int64_t count() const { return static_cast<std::int64_t>(pixels().size()); }
};

class FileBytes : public PictureBytes {
public:
    FileBytes(const std::wstring& path, const std::function<bool()>& givenUp)
        : path_(path), givenUp_(givenUp), file_(std::filesystem::path(path), std::ios::binary) {
        std::error_code error;
        size_ = static_cast<std::int64_t>(std::filesystem::file_size(path, error));
        if (error) size_ = 0;
    }
    bool isOpen() const { return file_.is_open(); }
    const std::wstring& path() const { return path_; }
    std::int64_t size() override { return size_; }
    std::string part(std::int64_t from, std::int64_t count) override {
        if (givenUp_()) return {};
        std::string bytes(static_cast<std::size_t>(std::clamp<std::int64_t>(size_ - from, 0, count)), '\0');
        file_.clear();
        file_.seekg(from);
        file_.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        bytes.resize(static_cast<std::size_t>(file_.gcount()));
        return bytes;
    }

private:
    std::wstring path_;
    const std::function<bool()>& givenUp_;
    std::ifstream file_;
    std::int64_t size_ = 0;
};

Pictures::Decoded refused(const std::string& reason) { return {Picture(), reason}; }

/// The system's decoder at one file. Each step says whether it went well.
class Decoder {
public:
    bool open(const std::wstring& path, const GUID& format) {
        GUID found{};
        return SUCCEEDED(factory_.create(CLSID_WICImagingFactory, IID_IWICImagingFactory)) &&
               SUCCEEDED(factory_->CreateDecoderFromFilename(path.c_str(), nullptr, GENERIC_READ,
                                                             WICDecodeMetadataCacheOnDemand, decoder_.out())) &&
               SUCCEEDED(decoder_->GetContainerFormat(&found)) && IsEqualGUID(found, format) != FALSE;
    }
    bool takeFirst(PictureSize& size) {
        UINT width = 0;
        UINT height = 0;
        if (FAILED(decoder_->GetFrame(0, frame_.out())) || FAILED(frame_->GetSize(&width, &height))) return false;
        if (width == 0 || height == 0 || width > kMaxPictureSide || height > kMaxPictureSide) return false;
        size = {static_cast<int>(width), static_cast<int>(height)};
        return true;
    }
    /// Makes the pixels ready at that size, which is the picture's own or a smaller one.
    bool prepare(PictureSize own, PictureSize held) {
        IWICBitmapSource* source = frame_.get();
        if (own != held) {
            if (FAILED(factory_->CreateBitmapScaler(scaler_.out())) ||
                FAILED(scaler_->Initialize(source, static_cast<UINT>(held.width), static_cast<UINT>(held.height),
                                           WICBitmapInterpolationModeFant)))
                return false;
            source = scaler_.get();
        }
        return SUCCEEDED(factory_->CreateFormatConverter(converter_.out())) &&
               SUCCEEDED(converter_->Initialize(source, GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone, nullptr,
                                                0, WICBitmapPaletteTypeCustom));
    }
    /// Rows of the prepared pixels, `width` each.
    bool read(int y, int count, int width, std::uint32_t* to) {
        const WICRect part{0, y, width, count};
        const UINT stride = static_cast<UINT>(width) * sizeof(std::uint32_t);
        return SUCCEEDED(
            converter_->CopyPixels(&part, stride, stride * static_cast<UINT>(count), reinterpret_cast<BYTE*>(to)));
    }

private:
    ComPointer<IWICImagingFactory> factory_;
    ComPointer<IWICBitmapDecoder> decoder_;
    ComPointer<IWICBitmapFrameDecode> frame_;
    ComPointer<IWICBitmapScaler> scaler_;
    ComPointer<IWICFormatConverter> converter_;
};

/// A grey JPEG of one block.
constexpr std::array<BYTE, 141> kGreyBlock{
    0xFF, 0xD8, 0xFF, 0xDB, 0x00, 0x43, 0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
    0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
    0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
    0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
    0xC0, 0x00, 0x0B, 0x08, 0x00, 0x08, 0x00, 0x08, 0x01, 0x01, 0x11, 0x00, 0xFF, 0xC4, 0x00, 0x14, 0x00, 0x01,
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xFF, 0xC4,
    0x00, 0x14, 0x10, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
    0x00, 0x00, 0xFF, 0xDA, 0x00, 0x08, 0x01, 0x01, 0x00, 0x00, 0x3F, 0x00, 0x3F, 0xFF, 0xD9};

/// The system's decoder makes a JPEG smaller while it reads; one that cannot holds the whole of it, some from its
/// opening on.
bool reducesJpegs() {
    static const bool reduces = [] {
        std::array<BYTE, kGreyBlock.size()> bytes = kGreyBlock;
        ComPointer<IWICImagingFactory> factory;
        ComPointer<IWICStream> stream;
        ComPointer<IWICBitmapDecoder> decoder;
        ComPointer<IWICBitmapFrameDecode> frame;
        ComPointer<SourceTransform> transform;
        return SUCCEEDED(factory.create(CLSID_WICImagingFactory, IID_IWICImagingFactory)) &&
               SUCCEEDED(factory->CreateStream(stream.out())) &&
               SUCCEEDED(stream->InitializeFromMemory(bytes.data(), static_cast<DWORD>(bytes.size()))) &&
               SUCCEEDED(factory->CreateDecoderFromStream(stream.get(), nullptr, WICDecodeMetadataCacheOnDemand,
                                                          decoder.out())) &&
               SUCCEEDED(decoder->GetFrame(0, frame.out())) && SUCCEEDED(transform.from(frame, SourceTransform::kId));
    }();
    return reduces;
}

/// By the system, some rows at once, so that it can be given up between them. told: the size that the file tells,
/// before the system is asked to open it. work: what its decoder takes beside the picture, in pixels' worth.
PicturePixels readBySystem(PictureBytes& bytes, const DecodingBounds& bounds, const GUID& format, PictureSize told,
                           std::int64_t work) {
    constexpr int kRowsAtOnce = 64;
    if (told.pixels() == 0) return PicturePixels::damaged();
    const PictureSize held = sizeToHold(told, bounds.held, work);
    if (held.pixels() == 0) return PicturePixels::tooLarge(told, sizeToHold(told, 0, work).pixels() > 0);
    Decoder decoder;
    PictureSize own;
    if (!decoder.open(dynamic_cast<FileBytes&>(bytes).path(), format) || !decoder.takeFirst(own) || own != told)
        return PicturePixels::damaged();
    if (bounds.givenUp() || !decoder.prepare(own, held)) return PicturePixels::damaged();
    UprightRows rows(own, held, orientationOf(bytes));
    Pixels some(static_cast<std::size_t>(held.width) * kRowsAtOnce);
    bool seeThrough = false;
    for (int y = 0; y < held.height; y += kRowsAtOnce) {
        const int count = std::min(kRowsAtOnce, held.height - y);
        if (bounds.givenUp() || !decoder.read(y, count, held.width, some.data())) return PicturePixels::damaged();
        for (int i = 0; i < count; ++i) {
            const std::uint32_t* const row = some.data() + static_cast<std::ptrdiff_t>(i) * held.width;
            seeThrough =
                seeThrough || std::any_of(row, row + held.width, [](auto pixel) { return pixel >> 24U < 255; });
            rows.put(y + i, row);
        }
    }
    PicturePixels whole = rows.take();
    whole.seeThrough = seeThrough;
    return whole;
}

/// Where it comes in several scans its decoder holds the coefficients of the whole, and goes through all of them for
/// each.
PicturePixels readJpeg(PictureBytes& bytes, const DecodingBounds& bounds) {
    constexpr std::int64_t kSamplesOfPixel = 2;  // each has two bytes
    const ComThread com(COINIT_MULTITHREADED);
    const JpegWork work = jpegWorkOf(bytes);
    if (work.size.pixels() > kMaxJpegPixels) return PicturePixels::tooLarge(work.size);
    if (work.scans > kMostScans || work.scans * work.samples > kMostScannedSamples) {
        return PicturePixels::failed("The picture is damaged: it has too many layers.");
    }
    const std::int64_t whole = reducesJpegs() ? 0 : work.size.pixels();
    const std::int64_t layers = work.scans > 1 ? work.samples / kSamplesOfPixel : 0;
    return readBySystem(bytes, bounds, GUID_ContainerFormatJpeg, work.size, whole + layers);
}

/// Its decoder holds the whole.
PicturePixels readPng(PictureBytes& bytes, const DecodingBounds& bounds) {
    constexpr std::int64_t kSides = 16;  // in the head of each
    const ComThread com(COINIT_MULTITHREADED);
    ByteWalk walk(bytes);
    walk.at = kSides;
    const auto side = [&walk] {
        const std::int64_t told = walk.number(4, true);
        return told > 0 && told <= kMaxPictureSide ? static_cast<int>(told) : 0;
    };
    PictureSize told{side(), 0};
    told.height = side();
    if (told.pixels() > kMaxPicturePixels) return PicturePixels::tooLarge(told);
    return readBySystem(bytes, bounds, GUID_ContainerFormatPng, told, told.pixels());
}

}  // namespace

std::int64_t heldPicturePixels() { return heldByAll; }

Picture pictureOf(PicturePixels decoded) {
    return Picture(std::make_shared<DecodedPicture>(decoded.held.width, decoded.held.height, std::move(decoded.pixels),
                                                    decoded.full.width, decoded.full.height));
}

std::unique_ptr<FrameReader> openFrames(const std::string& path, const std::function<bool()>& givenUp) {
    const std::wstring wide = toWide(path);
    if (!isPlainPath(wide) || !openPlainFile(wide)) return nullptr;
    FileBytes file(wide, givenUp);
    if (!file.isOpen() || file.size() > kMostMovingBytes) return nullptr;
    std::string bytes = file.part(0, file.size());
    if (static_cast<std::int64_t>(bytes.size()) < file.size() || !bytes.starts_with("GIF8")) return nullptr;
    return gifFrames(std::move(bytes));
}

Pictures::Decoded decodePicture(const std::string& path, const std::function<bool()>& givenUp) {
    const std::wstring wide = toWide(path);
    const DWORD kind = isPlainPath(wide) ? GetFileAttributesW(wide.c_str()) : INVALID_FILE_ATTRIBUTES;
    if (kind == INVALID_FILE_ATTRIBUTES) return refused("The file cannot be found.");
    if ((kind & FILE_ATTRIBUTE_DIRECTORY) != 0) return refused("This is not a file.");
    if (!openPlainFile(wide)) return refused("The file cannot be read.");
    FileBytes bytes(wide, givenUp);
    if (!bytes.isOpen()) return refused("The file cannot be read.");
    PicturePixels decoded = readPicture(bytes, {heldByAll, givenUp}, readJpeg, readPng);
    if (!decoded.reason.empty()) return {Picture(), decoded.reason, decoded.lacksRoom};
    return {pictureOf(std::move(decoded)), {}};
}

}  // namespace corvane
