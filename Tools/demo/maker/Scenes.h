#pragma once

#include "maker/Brush.h"

#include <numbers>

namespace ludarium::demo::scenes {

constexpr double pi = std::numbers::pi;

inline QColor rgb(unsigned value) {
    return QColor::fromRgb(value);
}

void space(Brush &brush);
void clouds(Brush &brush);
void plasma(Brush &brush);
void storm(Brush &brush);
void city(Brush &brush);
void grid(Brush &brush);
void castle(Brush &brush);
void dusk(Brush &brush);
void desert(Brush &brush);
void garden(Brush &brush);
void forest(Brush &brush);
void mountains(Brush &brush);
void clock(Brush &brush);
void hedge(Brush &brush);
void lighthouse(Brush &brush);
void swamp(Brush &brush);
void sea(Brush &brush);
void winter(Brush &brush);
void cave(Brush &brush);
void reef(Brush &brush);

} // namespace ludarium::demo::scenes
