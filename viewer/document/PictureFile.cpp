#include "document/PictureFile.h"

#include "common/ComPtr.h"

#include <cstdint>
#include <vector>

#include <wincodec.h>

namespace viewer {

namespace {

constexpr std::uint64_t kMostPixels = 64'000'000;
constexpr unsigned kWhite = 255;

template <class Interface>
using Ptr = common::ComPtr<Interface>;

// The first picture of the file, converted to pixels with premultiplied colours; null when there is none.
Ptr<IWICFormatConverter> FirstFrame(IWICImagingFactory& factory, std::string& bytes) {
    Ptr<IWICStream> stream;
    Ptr<IWICBitmapDecoder> decoder;
    Ptr<IWICBitmapFrameDecode> frame;
    Ptr<IWICFormatConverter> converter;
    if (FAILED(factory.CreateStream(stream.Receive())) ||
        FAILED(stream->InitializeFromMemory(reinterpret_cast<BYTE*>(bytes.data()),
                                            static_cast<DWORD>(bytes.size()))) ||
        FAILED(factory.CreateDecoderFromStream(stream.Get(), nullptr, WICDecodeMetadataCacheOnDemand,
                                               decoder.Receive())) ||
        FAILED(decoder->GetFrame(0, frame.Receive())) ||
        FAILED(factory.CreateFormatConverter(converter.Receive())) ||
        FAILED(converter->Initialize(frame.Get(), GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone,
                                     nullptr, 0.0, WICBitmapPaletteTypeCustom))) {
        return {};
    }
    return converter;
}

// Puts pixels with premultiplied colours on a white ground.
void PutOnWhite(std::uint8_t* pixels, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i, pixels += 4) {
        for (int channel = 0; channel < 3; ++channel) {
            pixels[channel] = static_cast<std::uint8_t>(pixels[channel] + kWhite - pixels[3]);
        }
    }
}

common::UniqueBitmap CopyPixels(IWICBitmapSource& source, UINT width, UINT height) {
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader,
                      static_cast<LONG>(width),
                      -static_cast<LONG>(height),
                      1,
                      32,
                      BI_RGB,
                      0,
                      0,
                      0,
                      0,
                      0};
    void* pixels = nullptr;
    common::UniqueBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
    const UINT stride = width * 4;
    if (!bitmap || FAILED(source.CopyPixels(nullptr, stride, stride * height, static_cast<BYTE*>(pixels)))) {
        return {};
    }
    PutOnWhite(static_cast<std::uint8_t*>(pixels), std::size_t{width} * height);
    return bitmap;
}

} // namespace

common::UniqueBitmap DecodePicture(std::string bytes) {
    Ptr<IWICImagingFactory> factory;
    UINT width = 0;
    UINT height = 0;
    if (bytes.empty() || FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                                 __uuidof(IWICImagingFactory), factory.ReceiveVoid()))) {
        return {};
    }
    const Ptr<IWICFormatConverter> source = FirstFrame(*factory.Get(), bytes);
    if (!source || FAILED(source->GetSize(&width, &height)) || width == 0 || height == 0 ||
        std::uint64_t{width} * height > kMostPixels) {
        return {};
    }
    return CopyPixels(*source.Get(), width, height);
}

} // namespace viewer
