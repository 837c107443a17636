#include "maker/Media.h"

#include "maker/Dice.h"

#include <QtEndian>
#include <cmath>

namespace ludarium::demo {

namespace {

constexpr int sampleRate = 11025;

double frequency(int semitone) { // above A 220
    return 220.0 * std::pow(2.0, semitone / 12.0);
}

double square(double phase, double width) {
    return phase - std::floor(phase) < width ? 1.0 : -1.0;
}

double triangle(double phase) {
    return 4 * std::abs(phase - std::floor(phase + 0.5)) - 1;
}

} // namespace

QByteArray tune(int seed) {
    // Eight bars of a chord sequence; the melody walks over the notes of the scale and rests on those of the chord.
    Dice dice(QStringLiteral("tune %1").arg(seed));
    static constexpr int minorScale[] = {0, 2, 3, 5, 7, 8, 10};
    static constexpr int majorScale[] = {0, 2, 4, 5, 7, 9, 11};
    const int *scale = dice.below(2) ? minorScale : majorScale;
    static constexpr int sequences[][4] = {{0, 5, 3, 4}, {0, 3, 4, 0}, {0, 4, 5, 3}, {5, 3, 0, 4}};
    const int *chords = sequences[dice.below(4)];
    const auto note = [scale](int step) {
        return scale[((step % 7) + 7) % 7] + 12 * static_cast<int>(std::floor(step / 7.0));
    };
    const int key = dice.below(7) - 3;
    const int stepSamples = sampleRate * (110 + dice.below(50)) / 1000;
    constexpr int steps = 8 * 8;

    QByteArray samples;
    int melody = 7;
    double leadPhase = 0;
    double chordPhase = 0;
    double bassPhase = 0;
    for (int step = 0; step < steps; ++step) {
        const int chord = chords[step / 8 % 4];
        const bool rest = step % 8 != 0 && dice.below(5) == 0;
        melody = qBound(4, melody + dice.below(5) - 2, 14);
        if (step % 4 == 0)
            melody = chord + 7 + 2 * dice.below(2);
        if (step == steps - 1)
            melody = 7;
        const double lead = frequency(key + note(melody) + 12);
        const double arpeggio = frequency(key + note(chord + 2 * (step % 3)) + 12);
        const double bass = frequency(key + note(chord) - 12 + (step % 4 == 2 ? 12 : 0));
        for (int i = 0; i < stepSamples; ++i) {
            const double part = static_cast<double>(i) / stepSamples;
            double value = 0.22 * triangle(bassPhase) + 0.10 * square(chordPhase, 0.25) * (1 - part);
            if (!rest)
                value += 0.20 * square(leadPhase, 0.5) * (1 - 0.7 * part);
            leadPhase += lead / sampleRate;
            chordPhase += arpeggio / sampleRate;
            bassPhase += bass / sampleRate;
            samples.append(static_cast<char>(qBound(0, static_cast<int>(std::lround(128 + 127 * value)), 255)));
        }
    }

    QByteArray wav("RIFF....WAVEfmt ");
    const auto put32 = [&wav](quint32 value) {
        char bytes[4];
        qToLittleEndian(value, bytes);
        wav.append(bytes, 4);
    };
    put32(16);
    wav.append(QByteArray("\1\0\1\0", 4)); // PCM, mono
    put32(sampleRate);
    put32(sampleRate);
    wav.append(QByteArray("\1\0\x8\0", 4)); // one byte a sample
    wav.append("data");
    put32(static_cast<quint32>(samples.size()));
    wav.append(samples);
    qToLittleEndian(static_cast<quint32>(wav.size() - 8), wav.data() + 4);
    return wav;
}

} // namespace ludarium::demo
