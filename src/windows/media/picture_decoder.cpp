// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/media/picture_decoder.h"

#include "windows/api.h"
// After windows.h:
#include <wincodec.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "toolkit/picture_budget.h"
#include "toolkit/picture_check.h"
#include "windows/bitmap_picture.h"
#include "windows/media/com_pointer.h"
#include "windows/plain_file.h"
#include "windows/text.h"

namespace corvane {

namespace {

using Pixels = BitmapPicture::Pixels;

std::atomic<std::int64_t> held{0};

/// A decoded picture, counted as long as it lives.
class DecodedPicture : public BitmapPicture {
public:
    DecodedPicture(int heldWidth, int heldHeight, Pixels pixels, int fullWidth, int fullHeight)
        : BitmapPicture(heldWidth, heldHeight, std::move(pixels), fullWidth, fullHeight) {
        held += count();
    }
    ~DecodedPicture() override { held -= count(); }

private:
    std::int64_t count() const { return static_cast<std::int64_t>(pixels().size()); }
};

class FileBytes : public PictureBytes {
public:
    explicit FileBytes(const std::wstring& path) : file_(std::filesystem::path(path), std::ios::binary) {
        std::error_code error;
        size_ = static_cast<std::int64_t>(std::filesystem::file_size(path, error));
        if (error) size_ = 0;
    }
    bool isOpen() const { return file_.is_open(); }
    std::int64_t size() override { return size_; }
    std::string part(std::int64_t from, std::int64_t count) override {
        std::string bytes(static_cast<std::size_t>(std::clamp<std::int64_t>(size_ - from, 0, count)), '\0');
        file_.clear();
        file_.seekg(from);
        file_.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        bytes.resize(static_cast<std::size_t>(file_.gcount()));
        return bytes;
    }

private:
    std::ifstream file_;
    std::int64_t size_ = 0;
};

struct Size {
    int width = 0, height = 0;
    std::int64_t pixels() const { return std::int64_t{width} * height; }
};

struct Image {
    Size size;
    Pixels pixels;
};

Pictures::Decoded refused(const std::string& reason) { return {Picture(), reason}; }

/// The pixel of an upright picture that stands at a place of the file's own.
std::size_t uprightPlace(int x, int y, Size size, int orientation) {
    const int right = size.width - 1 - x;
    const int below = size.height - 1 - y;
    const Size upright = swapsSides(orientation) ? Size{size.height, size.width} : size;
    int column = x;
    int row = y;
    switch (orientation) {
        case 2:
            column = right;
            break;
        case 3:
            column = right, row = below;
            break;
        case 4:
            row = below;
            break;
        case 5:
            column = y, row = x;
            break;
        case 6:
            column = below, row = x;
            break;
        case 7:
            column = below, row = right;
            break;
        case 8:
            column = y, row = right;
            break;
        default:
            break;
    }
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(upright.width) + static_cast<std::size_t>(column);
}

Image turnedUpright(Image image, int orientation) {
    if (orientation == 1) return image;
    Pixels turned(image.pixels.size());
    std::size_t at = 0;
    for (int y = 0; y < image.size.height; ++y) {
        for (int x = 0; x < image.size.width; ++x)
            turned[uprightPlace(x, y, image.size, orientation)] = image.pixels[at++];
    }
    if (swapsSides(orientation)) std::swap(image.size.width, image.size.height);
    return {image.size, std::move(turned)};
}

/// A GIF's first picture may be smaller than its screen.
Image onItsScreen(Image image, const GifPlace& place) {
    const Size screen{place.screenWidth, place.screenHeight};
    const bool inside = place.left + image.size.width <= screen.width && place.top + image.size.height <= screen.height;
    if (!inside || screen.pixels() == image.size.pixels()) return image;
    Pixels pixels(static_cast<std::size_t>(screen.pixels()));
    for (int y = 0; y < image.size.height; ++y) {
        const auto from = image.pixels.begin() + std::ptrdiff_t{y} * image.size.width;
        std::copy_n(from, image.size.width, pixels.begin() + std::ptrdiff_t{place.top + y} * screen.width + place.left);
    }
    return {screen, std::move(pixels)};
}

/// The system's decoder at one file. Each step says whether it went well.
class Decoder {
public:
    bool open(const std::wstring& path) {
        return SUCCEEDED(factory_.create(CLSID_WICImagingFactory, IID_IWICImagingFactory)) &&
               SUCCEEDED(factory_->CreateDecoderFromFilename(path.c_str(), nullptr, GENERIC_READ,
                                                             WICDecodeMetadataCacheOnDemand, decoder_.out())) &&
               SUCCEEDED(decoder_->GetContainerFormat(&format_));
    }
    bool is(const GUID& format) const { return IsEqualGUID(format_, format) != FALSE; }
    bool takeFirst(Size& size) {
        UINT width = 0;
        UINT height = 0;
        if (FAILED(decoder_->GetFrame(0, frame_.out())) || FAILED(frame_->GetSize(&width, &height))) return false;
        constexpr UINT kMost = 0x7FFFFFFF;
        if (width == 0 || height == 0 || width > kMost || height > kMost) return false;
        size = {static_cast<int>(width), static_cast<int>(height)};
        return true;
    }
    /// The pixels at that size, which is the picture's own or a smaller one.
    bool read(Size own, Image& image) {
        ComPointer<IWICBitmapScaler> scaler;
        IWICBitmapSource* source = frame_.get();
        const auto width = static_cast<UINT>(image.size.width);
        const auto height = static_cast<UINT>(image.size.height);
        if (own.pixels() != image.size.pixels()) {
            if (FAILED(factory_->CreateBitmapScaler(scaler.out())) ||
                FAILED(scaler->Initialize(source, width, height, WICBitmapInterpolationModeFant)))
                return false;
            source = scaler.get();
        }
        ComPointer<IWICFormatConverter> converter;
        if (FAILED(factory_->CreateFormatConverter(converter.out())) ||
            FAILED(converter->Initialize(source, GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone, nullptr, 0,
                                         WICBitmapPaletteTypeCustom)))
            return false;
        image.pixels.resize(static_cast<std::size_t>(image.size.pixels()));
        const UINT stride = width * sizeof(std::uint32_t);
        return SUCCEEDED(
            converter->CopyPixels(nullptr, stride, stride * height, reinterpret_cast<BYTE*>(image.pixels.data())));
    }

private:
    ComPointer<IWICImagingFactory> factory_;
    ComPointer<IWICBitmapDecoder> decoder_;
    ComPointer<IWICBitmapFrameDecode> frame_;
    GUID format_{};
};

Pictures::Decoded decodeOpened(Decoder& decoder, FileBytes& bytes) {
    const bool jpeg = decoder.is(GUID_ContainerFormatJpeg);
    const bool gif = decoder.is(GUID_ContainerFormatGif);
    if (!jpeg && !gif && !decoder.is(GUID_ContainerFormatBmp) && !decoder.is(GUID_ContainerFormatPng))
        return refused("This is not a picture of a known format.");
    Size own;
    if (!decoder.takeFirst(own)) return refused("The picture is damaged or too large.");
    const GifPlace place = gif ? gifPlaceOf(bytes) : GifPlace();
    const Size whole = gif ? Size{place.screenWidth, place.screenHeight} : own;
    // Only a JPEG's decoder reduces while it reads; others would read the whole first.
    if (std::max(own.pixels(), whole.pixels()) > (jpeg ? kMaxPicturePixels : kMaxHeldPixels)) {
        return refused("The picture is too large (" + std::to_string(whole.width) + " x " +
                       std::to_string(whole.height) + " pixels).");
    }
    const int orientation = jpeg ? orientationOf(bytes) : 1;
    const double share = jpeg ? shareToHold(own.pixels(), held, orientation != 1) : 1.0;
    const auto reduced = [share](int side) { return std::max(1, static_cast<int>(std::floor(side * share))); };
    Image image{{reduced(own.width), reduced(own.height)}, {}};
    if (!decoder.read(own, image)) return refused("The picture is damaged.");
    image = turnedUpright(std::move(image), orientation);
    if (swapsSides(orientation)) std::swap(own.width, own.height);
    if (gif) {
        image = onItsScreen(std::move(image), place);
        own = image.size;
    }
    return {Picture(std::make_shared<DecodedPicture>(image.size.width, image.size.height, std::move(image.pixels),
                                                     own.width, own.height)),
            {}};
}

}  // namespace

std::int64_t heldPicturePixels() { return held; }

Pictures::Decoded decodePicture(const std::string& path) {
    const std::wstring wide = toWide(path);
    const DWORD kind = isPlainName(wide) ? GetFileAttributesW(wide.c_str()) : INVALID_FILE_ATTRIBUTES;
    if (kind == INVALID_FILE_ATTRIBUTES) return refused("The file cannot be found.");
    if ((kind & FILE_ATTRIBUTE_DIRECTORY) != 0) return refused("This is not a file.");
    if (!openPlainFile(wide)) return refused("The file cannot be read.");
    FileBytes bytes(wide);
    if (!bytes.isOpen()) return refused("The file cannot be read.");
    if (!endsWhole(bytes)) return refused("The picture is damaged: the file ends too early.");
    const ComThread com(COINIT_MULTITHREADED);
    try {
        Decoder decoder;
        if (!decoder.open(wide)) return refused("This is not a picture of a known format.");
        return decodeOpened(decoder, bytes);
    } catch (const std::bad_alloc&) {
        return refused("There is not enough memory for the picture.");
    }
}

}  // namespace corvane
