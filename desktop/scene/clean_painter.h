#pragma once

// A painter whose calls leave the processor to the code that follows them.

#include <QPainter>

#include "engine/astro/processor.h"

namespace glintara::desktop {

/// A painter that is reached through `->` only. Qt's routines may return with the upper halves of the vector registers
/// in use, which slows down the arithmetic between two calls of the painter several times over; after each call through
/// here they are clear.
class CleanPainter {
  public:
    class Call {
      public:
        explicit Call(QPainter& painter) : painter_(painter) {}
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;
        ~Call() { ClearUpperHalves(); }

        QPainter* operator->() const { return &painter_; }

      private:
        QPainter& painter_;
    };

    /// The painter for one call, up to the end of the expression.
    Call operator->() { return Call(painter_); }

  private:
    QPainter painter_;
};

}  // namespace glintara::desktop
