#include "Sounds.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <numbers>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessaro::content {

namespace fs = std::filesystem;

namespace {

constexpr int kRate = 22050; ///< samples a second
constexpr double kVolume = 0.22;

/// A note: when it begins, its pitch, and how fast it dies away.
struct Note {
    double start;
    double hertz;
    double decay;
};

struct Sound {
    const char* file;
    double seconds;
    std::vector<Note> notes;
};

std::vector<Sound> Sounds() {
    return {
        {"tessaro.wav",
         8,
         {{0, 220.00, 0.5},
          {0, 277.18, 0.5},
          {0, 329.63, 0.5},
          {2, 246.94, 0.5},
          {2, 293.66, 0.5},
          {2, 369.99, 0.5},
          {4, 196.00, 0.5},
          {4, 246.94, 0.5},
          {4, 293.66, 0.5},
          {6, 220.00, 0.5},
          {6, 277.18, 0.5},
          {6, 329.63, 0.5}}},
        {"bells.wav",
         6,
         {{0, 523.25, 1.1}, {0.75, 659.26, 1.1}, {1.5, 783.99, 1.1}, {3, 659.26, 1.1}, {3.75, 587.33, 1.1}}},
        {"low.wav", 6, {{0, 110.00, 0.35}, {0, 164.81, 0.35}, {3, 98.00, 0.35}, {3, 146.83, 0.35}}},
    };
}

/// The notes mixed; what rings on beyond the end goes to the beginning, so that the piece has no seam.
std::vector<std::int16_t> Mix(const Sound& sound) {
    const auto length = static_cast<std::size_t>(sound.seconds * kRate);
    std::vector<double> wave(length, 0.0);
    for (const Note& note : sound.notes)
        for (std::size_t i = 0; i < length; ++i) {
            const double time = static_cast<double>(i) / kRate;
            const double attack = std::min(1.0, time / 0.03);
            const double tone = std::sin(2 * std::numbers::pi * note.hertz * time) +
                                0.3 * std::sin(4 * std::numbers::pi * note.hertz * time);
            wave[(i + static_cast<std::size_t>(note.start * kRate)) % length] +=
                attack * std::exp(-note.decay * time) * tone;
        }
    std::vector<std::int16_t> samples;
    samples.reserve(length);
    for (const double value : wave)
        samples.push_back(static_cast<std::int16_t>(std::clamp(value * kVolume, -1.0, 1.0) * 32000));
    return samples;
}

void Put(std::string& bytes, std::uint32_t number, int size) {
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(number >> (8 * i) & 0xff);
}

/// A mono wave file of 16 bits a sample.
void WriteWave(const fs::path& path, const std::vector<std::int16_t>& samples) {
    const auto size = static_cast<std::uint32_t>(samples.size() * 2);
    std::string bytes = "RIFF";
    Put(bytes, 36 + size, 4);
    bytes += "WAVEfmt ";
    Put(bytes, 16, 4);
    Put(bytes, 1, 2); // plain samples
    Put(bytes, 1, 2); // channels
    Put(bytes, kRate, 4);
    Put(bytes, kRate * 2, 4);
    Put(bytes, 2, 2);
    Put(bytes, 16, 2);
    bytes += "data";
    Put(bytes, size, 4);
    for (const std::int16_t sample : samples)
        Put(bytes, static_cast<std::uint16_t>(sample), 2);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw std::runtime_error("can't write " + path.string());
}

} // namespace

void BuildSounds(const fs::path& folder) {
    fs::create_directories(folder);
    for (const Sound& sound : Sounds())
        WriteWave(folder / sound.file, Mix(sound));
}

} // namespace tessaro::content
