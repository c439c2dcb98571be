#pragma once

class QWidget;

// One notch of the mouse wheel turned with the pointer over the widget's middle, sent to it
// (a test cannot send it as the window system does, which would also pass an unaccepted wheel on
// to the parents). Returns whether the widget accepted it.
bool turnWheel(QWidget *over, int notches = -1);
