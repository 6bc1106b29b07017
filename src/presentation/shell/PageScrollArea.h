#pragma once

class QScrollArea;
class QWidget;

// A page's content in a frameless, see-through scroll area that follows the
// page's width. The content is never cut and never moves unseen: it stands
// still where it fits, and scrolls vertically with a visible bar where the
// window is shorter than its fixed blocks. Keeping the content in one area
// all the time means a change of size never re-parents it (nor loses state).
QScrollArea *makePageScrollArea(QWidget *content);

// In a short window the content is at least `minimumHeight` high; in any
// window at least the height its layout needs.
void setPageScrolling(QScrollArea *area, bool isShort, int minimumHeight);
