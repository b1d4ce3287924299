#include "tests/win/large_png.h"

#include <wincodec.h>
#include <wrl/client.h>

#include <cstdint>
#include <vector>

using Microsoft::WRL::ComPtr;

bool writeLargePng(const std::string& path, UINT side) {
    ComPtr<IWICImagingFactory> factory;
    ComPtr<IWICStream> stream;
    ComPtr<IWICBitmapEncoder> encoder;
    ComPtr<IWICBitmapFrameEncode> frame;
    std::wstring wide(path.begin(), path.end());
    if (FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                IID_PPV_ARGS(&factory))) ||
        FAILED(factory->CreateStream(&stream)) ||
        FAILED(stream->InitializeFromFilename(wide.c_str(), GENERIC_WRITE)) ||
        FAILED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder)) ||
        FAILED(encoder->Initialize(stream.Get(), WICBitmapEncoderNoCache)) ||
        FAILED(encoder->CreateNewFrame(&frame, nullptr)) || FAILED(frame->Initialize(nullptr)) ||
        FAILED(frame->SetSize(side, side)))
        return false;
    WICPixelFormatGUID format = GUID_WICPixelFormat32bppBGRA;
    if (FAILED(frame->SetPixelFormat(&format)) || format != GUID_WICPixelFormat32bppBGRA)
        return false;
    std::vector<uint8_t> row(side * 4);
    uint32_t noise = 12345;
    for (UINT y = 0; y < side; ++y) {
        for (UINT x = 0; x < side; ++x) {
            noise = noise * 1103515245 + 12345;
            row[4 * x] = uint8_t(x + (noise >> 28));
            row[4 * x + 1] = uint8_t(y);
            row[4 * x + 2] = uint8_t((x ^ y) >> 4);
            row[4 * x + 3] = uint8_t(x < 16 && y < 16 ? 0 : 255);
        }
        if (FAILED(frame->WritePixels(1, side * 4, side * 4, row.data()))) return false;
    }
    return SUCCEEDED(frame->Commit()) && SUCCEEDED(encoder->Commit());
}
