#pragma once

#include <QLatin1String>
#include <QString>

#include <functional>

/// How long work of a wizard tells how far it is.
namespace tessaro {

/// Thrown where the work tells its progress, when the user has given it up.
struct WorkGivenUp {};

/// Where a wizard shows how far its work is, and lets it be given up. What isn't set isn't told or asked.
struct WizardProgress {
    std::function<void(int)> main = {};
    std::function<void(int)> child = {};
    std::function<void(const QString& key)> label = {};
    std::function<bool()> givenUp = {};

    void Main(int percent) const {
        Check();
        if (main) main(percent);
    }
    void Child(int percent) const {
        Check();
        if (child) child(percent);
    }
    void Label(const char* key) const {
        Check();
        if (label) label(QLatin1String(key));
    }

  private:
    void Check() const {
        if (givenUp && givenUp()) throw WorkGivenUp();
    }
};

} // namespace tessaro
