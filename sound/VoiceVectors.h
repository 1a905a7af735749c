// SPDX-License-Identifier: Zlib
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "sound/HyperbolicTangent.h"
#include "sound/VoiceStages.h"

// All vector code is inlined into the one function that names its instruction set. So no AVX2
// instruction can end up in code that other processors run.
#define VECTOR_INLINE [[gnu::always_inline]] static inline

// A register of floats, one voice in each lane, and registers of doubles for half as many voices.
template <>
struct VoiceStages::Vectors<4> {
    typedef float Floats __attribute__((vector_size(16)));
    typedef std::int32_t Ints __attribute__((vector_size(16))); // of a comparison: 0 or -1
    typedef std::uint32_t Bits __attribute__((vector_size(16)));
    typedef float HalfFloats __attribute__((vector_size(8)));
    typedef double Doubles __attribute__((vector_size(16)));

    VECTOR_INLINE Floats zipLow(Floats a, Floats b) {
        return __builtin_shufflevector(a, b, 0, 4, 1, 5);
    }
    VECTOR_INLINE Floats zipHigh(Floats a, Floats b) {
        return __builtin_shufflevector(a, b, 2, 6, 3, 7);
    }
};

template <>
struct VoiceStages::Vectors<8> {
    typedef float Floats __attribute__((vector_size(32)));
    typedef std::int32_t Ints __attribute__((vector_size(32))); // of a comparison: 0 or -1
    typedef std::uint32_t Bits __attribute__((vector_size(32)));
    typedef float HalfFloats __attribute__((vector_size(16)));
    typedef double Doubles __attribute__((vector_size(32)));

    // Zips each half of the register separately, which is one instruction.
    VECTOR_INLINE Floats zipLow(Floats a, Floats b) {
        return __builtin_shufflevector(a, b, 0, 8, 1, 9, 4, 12, 5, 13);
    }
    VECTOR_INLINE Floats zipHigh(Floats a, Floats b) {
        return __builtin_shufflevector(a, b, 2, 10, 3, 11, 6, 14, 7, 15);
    }
};

template <typename Vector, typename Number>
VECTOR_INLINE Vector loadVector(const Number* from) {
    Vector vector;
    std::memcpy(&vector, from, sizeof vector);
    return vector;
}

template <typename Vector, typename Number>
VECTOR_INLINE void storeVector(Number* to, Vector vector) {
    std::memcpy(to, &vector, sizeof vector);
}

// Transposes four vectors, or both halves of four vectors.
template <typename Vectors, typename Floats>
VECTOR_INLINE void transposeFour(Floats* rows) {
    const Floats a = Vectors::zipLow(rows[0], rows[2]);
    const Floats b = Vectors::zipHigh(rows[0], rows[2]);
    const Floats c = Vectors::zipLow(rows[1], rows[3]);
    const Floats d = Vectors::zipHigh(rows[1], rows[3]);
    rows[0] = Vectors::zipLow(a, c);
    rows[1] = Vectors::zipHigh(a, c);
    rows[2] = Vectors::zipLow(b, d);
    rows[3] = Vectors::zipHigh(b, d);
}

// hyperbolicTangent of each lane, with the same steps.
template <typename Vectors, typename Floats>
VECTOR_INLINE Floats tanhOfLanes(Floats x) {
    using C = TanhConstants;
    using Bits = typename Vectors::Bits;
    constexpr std::uint32_t signBit = 0x80000000;
    const Bits sign = reinterpret_cast<Bits>(x) & signBit;
    const Floats size = reinterpret_cast<Floats>(reinterpret_cast<Bits>(x) & ~signBit);
    const Floats largest = Floats{} + C::largest;
    const Floats y = 2 * (largest < size ? largest : size);
    const Floats shifted = y * C::log2e + C::rounder;
    const Floats n = shifted - C::rounder;
    const Floats r = (y - n * C::ln2High) - n * C::ln2Low;
    const Floats tail = C::c2 + r * (C::c3 + r * (C::c4 + r * (C::c5 + r * (C::c6 + r * C::c7))));
    const Floats expm1OfRest = r + r * r * tail;
    const Bits power = (reinterpret_cast<Bits>(shifted) + 127) << 23;
    const Floats scale = reinterpret_cast<Floats>(power);
    const Floats m = scale * expm1OfRest + (scale - 1);
    const Bits quotient = reinterpret_cast<Bits>(m / (m + 2));
    return reinterpret_cast<Floats>((quotient & ~signBit) | sign);
}
