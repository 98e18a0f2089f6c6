// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "winapi/api.h"
// After windows.h:
#include <wincodec.h>

namespace corvane {

/// The system's IWICBitmapSourceTransform, which the compiler's headers leave out: a frame that makes its picture
/// smaller while it decodes. The order of its functions is the system's.
struct SourceTransform : IUnknown {
    static constexpr GUID kId{0x3B16811B, 0x6A43, 0x4EC9, {0xB7, 0x13, 0x3D, 0x5A, 0x0C, 0x13, 0xB9, 0x40}};

    virtual HRESULT STDMETHODCALLTYPE CopyPixels(const WICRect* part, UINT width, UINT height, GUID* format, int turned,
                                                 UINT stride, UINT size, BYTE* to) = 0;
    /// The nearest size that it makes by itself, for the wanted one.
    virtual HRESULT STDMETHODCALLTYPE GetClosestSize(UINT* width, UINT* height) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetClosestPixelFormat(GUID* format) = 0;
    virtual HRESULT STDMETHODCALLTYPE DoesSupportTransform(int turned, BOOL* supported) = 0;
};

}  // namespace corvane
