// Item pictures on Windows: PNG and JPEG files decoded with the Windows
// Imaging Component, the default picture from a raw data resource, and
// drawing without scaling. Decoding asks the file's size and header first and
// refuses what exceeds the limits, because the files come from the network.
// Start-up does not set COM up, so each decode does it for its own thread and
// undoes only what it did.
#include "shell/item_graphics_win.h"

#include <cstring>
#include <wincodec.h>
#include <wrl/client.h>

#include <new>
#include <span>

#include "base/packed_dib.h"
#include "shell/item_graphics.h"
#include "ui/dialog_win.h"
#include "ui/dpi.h"

using Microsoft::WRL::ComPtr;

namespace {

// COM for the current thread for as long as a decode runs. A thread that
// already has COM in the multithreaded apartment refuses a second mode
// (RPC_E_CHANGED_MODE); WIC works there too, and that thread's COM is left
// exactly as it was.
class ScopedCom {
  public:
    ScopedCom() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~ScopedCom() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }
    ScopedCom(const ScopedCom&) = delete;
    ScopedCom& operator=(const ScopedCom&) = delete;
    bool usable() const { return SUCCEEDED(result_) || result_ == RPC_E_CHANGED_MODE; }

  private:
    HRESULT result_;
};

std::optional<uint64_t> fileSize(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
        return std::nullopt;
    return uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
}

std::wstring widePath(const std::string& path) {
    const int length = MultiByteToWideChar(CP_ACP, 0, path.c_str(), -1, nullptr, 0);
    if (length <= 0) return {};
    std::wstring wide(length, L'\0');
    MultiByteToWideChar(CP_ACP, 0, path.c_str(), -1, wide.data(), length);
    wide.resize(length - 1);
    return wide;
}

uint32_t formatBits(IWICImagingFactory* factory, const WICPixelFormatGUID& format) {
    ComPtr<IWICComponentInfo> component;
    ComPtr<IWICPixelFormatInfo> info;
    UINT bits = 0;
    if (SUCCEEDED(factory->CreateComponentInfo(format, &component)) &&
        SUCCEEDED(component.As(&info)))
        info->GetBitsPerPixel(&bits);
    return bits;
}

// The first frame of a file, with the file's facts. container names the
// decoder to use, or nullptr to let WIC recognise the format.
struct OpenedImage {
    ComPtr<IWICImagingFactory> factory;
    ComPtr<IWICBitmapFrameDecode> frame;
    ImageInfo info;
};

// The first frame of what the stream holds. container names the decoder to
// use, or nullptr to let WIC recognise the format.
bool openStream(OpenedImage& image, IWICStream* stream, const GUID* container) {
    ComPtr<IWICBitmapDecoder> decoder;
    if (container) {
        if (FAILED(image.factory->CreateDecoder(*container, nullptr, &decoder)) ||
            FAILED(decoder->Initialize(stream, WICDecodeMetadataCacheOnDemand)))
            return false;
    } else if (FAILED(image.factory->CreateDecoderFromStream(
                   stream, nullptr, WICDecodeMetadataCacheOnDemand, &decoder))) {
        return false;
    }

    UINT width = 0, height = 0;
    WICPixelFormatGUID format;
    if (FAILED(decoder->GetFrame(0, &image.frame)) ||
        FAILED(image.frame->GetSize(&width, &height)) ||
        FAILED(image.frame->GetPixelFormat(&format)))
        return false;
    image.info.width = width;
    image.info.height = height;
    image.info.bitsPerPixel = formatBits(image.factory.Get(), format);
    return true;
}

std::optional<OpenedImage> openImage(const std::string& path, const GUID* container) {
    OpenedImage image;
    const std::optional<uint64_t> size = fileSize(path);
    const std::wstring wide = widePath(path);
    if (!size || wide.empty()) return std::nullopt;
    image.info.fileBytes = *size;

    ComPtr<IWICStream> stream;
    if (FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                IID_PPV_ARGS(&image.factory))) ||
        FAILED(image.factory->CreateStream(&stream)) ||
        FAILED(stream->InitializeFromFilename(wide.c_str(), GENERIC_READ)) ||
        !openStream(image, stream.Get(), container))
        return std::nullopt;
    return image;
}

// A picture of our own in the program's resources, kept as PNG for its size.
std::optional<OpenedImage> openPngBytes(const uint8_t* bytes, DWORD size) {
    OpenedImage image;
    image.info.fileBytes = size;
    ComPtr<IWICStream> stream;
    if (FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                IID_PPV_ARGS(&image.factory))) ||
        FAILED(image.factory->CreateStream(&stream)) ||
        FAILED(stream->InitializeFromMemory(const_cast<uint8_t*>(bytes), size)) ||
        !openStream(image, stream.Get(), &GUID_ContainerFormatPng))
        return std::nullopt;
    return image;
}

// All pixels of the frame in the given format, top row first, rowBytes apart.
std::optional<std::vector<uint8_t>> copyPixels(const OpenedImage& image,
                                               const WICPixelFormatGUID& format,
                                               std::size_t rowBytes) {
    ComPtr<IWICFormatConverter> converter;
    if (FAILED(image.factory->CreateFormatConverter(&converter)) ||
        FAILED(converter->Initialize(image.frame.Get(), format, WICBitmapDitherTypeNone, nullptr,
                                     0.0, WICBitmapPaletteTypeCustom)))
        return std::nullopt;
    std::vector<uint8_t> rows(rowBytes * image.info.height);
    if (FAILED(converter->CopyPixels(nullptr, static_cast<UINT>(rowBytes),
                                     static_cast<UINT>(rows.size()), rows.data())))
        return std::nullopt;
    return rows;
}

std::optional<OpenedImage> openWithinLimits(const std::string& path, const GUID& container) {
    // The size on disk is checked before any decoder reads the file.
    const std::optional<uint64_t> size = fileSize(path);
    if (!size || *size > kMaxPictureFileBytes) return std::nullopt;
    std::optional<OpenedImage> image = openImage(path, &container);
    if (!image ||
        !pictureWithinLimits(image->info.fileBytes, image->info.width, image->info.height))
        return std::nullopt;
    return image;
}

std::optional<Picture> pictureOfPng(const std::optional<OpenedImage>& image) {
    if (!image) return std::nullopt;
    const auto width = static_cast<int32_t>(image->info.width);
    const auto height = static_cast<int32_t>(image->info.height);
    const std::size_t rowBytes = std::size_t(width) * 4;
    const std::optional<std::vector<uint8_t>> rows =
        copyPixels(*image, GUID_WICPixelFormat32bppBGRA, rowBytes);
    if (!rows) return std::nullopt;
    const int bits = bgraRowsHaveTransparency(*rows, rowBytes, width, height) ? 32 : 24;
    Picture picture = packedDibFromBgraRows(*rows, rowBytes, width, height, bits);
    if (picture.empty()) return std::nullopt;
    return picture;
}

std::optional<Picture> decodePng(const std::string& path) {
    return pictureOfPng(openWithinLimits(path, GUID_ContainerFormatPng));
}

std::optional<Picture> decodeJpeg(const std::string& path) {
    const std::optional<OpenedImage> image = openWithinLimits(path, GUID_ContainerFormatJpeg);
    if (!image) return std::nullopt;
    const auto width = static_cast<int32_t>(image->info.width);
    const auto height = static_cast<int32_t>(image->info.height);
    const std::size_t rowBytes = dibStride(width, 24);
    const std::optional<std::vector<uint8_t>> rows =
        copyPixels(*image, GUID_WICPixelFormat24bppBGR, rowBytes);
    if (!rows) return std::nullopt;
    Picture picture = packedDibFromBgrRows(*rows, rowBytes, width, height);
    if (picture.empty()) return std::nullopt;
    return picture;
}

// Runs a decode with COM set up; an allocation that fails is a picture that
// cannot be had, not a reason to end the program.
template <class Decode>
auto withCom(Decode decode) -> decltype(decode()) {
    try {
        ScopedCom com;
        if (!com.usable()) return std::nullopt;
        return decode();
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

}  // namespace

std::optional<Picture> ReadPngFile(const std::string& path) {
    return withCom([&] { return decodePng(path); });
}

std::optional<Picture> ReadJpegFile(const std::string& path) {
    return withCom([&] { return decodeJpeg(path); });
}

std::optional<ImageInfo> GetImageInfo(const std::string& path) {
    return withCom([&]() -> std::optional<ImageInfo> {
        const std::optional<OpenedImage> image = openImage(path, nullptr);
        if (!image) return std::nullopt;
        return image->info;
    });
}

std::optional<Picture> loadGraphicFile(const std::string& path) {
    switch (chooseDecoder(path)) {
        case PictureDecoder::Png:
            return ReadPngFile(path);
        case PictureDecoder::Jpeg:
            return ReadJpegFile(path);
        case PictureDecoder::None:
            break;
    }
    return std::nullopt;
}

std::optional<Picture> loadBitmapResourceDib(int resourceId) {
    HINSTANCE module = resourceModule();
    HRSRC found = FindResourceA(module, MAKEINTRESOURCEA(resourceId), RT_RCDATA);
    HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    const void* data = loaded ? LockResource(loaded) : nullptr;
    if (!data) return std::nullopt;
    // Resources stay mapped for the life of the module: nothing to release.
    const auto* bytes = static_cast<const uint8_t*>(data);
    const DWORD size = SizeofResource(module, found);
    if (size >= 8 && std::memcmp(bytes, "\x89PNG\r\n\x1A\n", 8) == 0)
        return withCom([&] { return pictureOfPng(openPngBytes(bytes, size)); });
    return pictureFromBitmapFile({bytes, size});
}

bool drawPicture(HDC dc, int x, int y, const Picture& picture) {
    const std::optional<DibInfo> info = getDibInfo(picture);
    if (!info) return false;
    const auto* header = reinterpret_cast<const BITMAPINFO*>(picture.data());
    return SetDIBitsToDevice(dc, x, y, info->width, info->height, 0, 0, 0, info->height,
                             picture.data() + info->bitsOffset, header, DIB_RGB_COLORS) != 0;
}

bool drawPictureStretched(HDC dc, const RECT& to, const Picture& picture, const RECT& from) {
    const std::optional<DibInfo> info = getDibInfo(picture);
    if (!info) return false;
    const auto* header = reinterpret_cast<const BITMAPINFO*>(picture.data());
    // A bottom-up picture counts its source rows from the bottom.
    const int sourceY = info->bottomUp ? info->height - from.bottom : from.top;
    const int oldMode = SetStretchBltMode(dc, HALFTONE);
    SetBrushOrgEx(dc, 0, 0, nullptr);
    const int lines =
        StretchDIBits(dc, to.left, to.top, to.right - to.left, to.bottom - to.top, from.left,
                      sourceY, from.right - from.left, from.bottom - from.top,
                      picture.data() + info->bitsOffset, header, DIB_RGB_COLORS, SRCCOPY);
    SetStretchBltMode(dc, oldMode);
    return lines > 0;  // GDI_ERROR reads as -1
}

bool drawPictureOverAt(HDC dc, int x, int y, const Picture& picture, COLORREF background,
                       unsigned dpi) {
    if (dpi == kBaseDpi) return drawPictureOver(dc, x, y, picture, background);
    const std::optional<DibInfo> info = getDibInfo(picture);
    if (!info) return false;
    const RECT to{x, y, x + scaleForDpi(info->width, dpi), y + scaleForDpi(info->height, dpi)};
    const RECT from{0, 0, info->width, info->height};
    if (info->bitCount != 32) return drawPictureStretched(dc, to, picture, from);
    return drawPictureStretched(dc, to, compositeOverColour(picture, *info, background), from);
}

bool drawPictureOver(HDC dc, int x, int y, const Picture& picture, COLORREF background) {
    const std::optional<DibInfo> info = getDibInfo(picture);
    if (!info) return false;
    if (info->bitCount != 32) return drawPicture(dc, x, y, picture);
    return drawPicture(dc, x, y, compositeOverColour(picture, *info, background));
}
