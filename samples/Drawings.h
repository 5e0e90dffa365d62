// What the sample scene is drawn with. Each drawing is made by its number alone, so that a series can
// be made anew at any time and is the same, pixel by pixel.
#pragma once

#include <QImage>

/// A walker on the spot, facing right, on 480 by 480 pixels of transparent ground.
/// @param number 1 to 8: a foot lands in 1, the other one in 5
QImage WalkDrawing(int number);
constexpr int kWalkDrawings = 8;
constexpr int kWalkGround = 430; // y of the soles
constexpr int kStepLength = 148; // pixels that the walker goes forward from 1 to 5

/// Water thrown up by a foot, on 420 by 260 pixels of transparent ground.
/// @param number 1 to 12
QImage SplashDrawing(int number);
constexpr int kSplashDrawings = 12;
constexpr int kSplashGround = 210; // y of the puddle

/// A street in the evening after rain, 1280 by 720 pixels.
/// @param puddles x of the places where water stands
QImage Street(const QVector<int> &puddles);
constexpr int kStreetGround = 640; // y where people walk
