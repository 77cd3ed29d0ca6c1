// SPDX-License-Identifier: MIT
#include <larynth/ComPtr.h>

#if defined(MALFORMED_IDENTIFIER)
struct LARYNTH_INTERFACE(IExample, "12345678-1234-1234-1234-12345678901g") : IUnknown {};
#elif defined(NO_IDENTIFIER)
struct IExample : IUnknown {};
#else
struct LARYNTH_INTERFACE(IExample, "12345678-1234-1234-1234-12345678901f") : IUnknown {};
#endif

bool Answers(IUnknown* object) { return ComPtr<IExample>().TryQuery(object); }
