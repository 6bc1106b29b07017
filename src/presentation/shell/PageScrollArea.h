#pragma once

class QScrollArea;
class QWidget;

// A page's content in a frameless, see-through scroll area that follows the
// page's width. A page that scrolls only when the window is short keeps its
// content in one all the time and switches the scrolling, so switching never
// re-parents the content (and never loses its state).
QScrollArea *makePageScrollArea(QWidget *content);

// In a short window the content scrolls vertically and is at least
// `minimumHeight` high. Otherwise it stands in the page with no scroll bar,
// top-aligned: what does not fit is cut at the bottom instead of the page
// pushing the window taller.
void setPageScrolling(QScrollArea *area, bool isShort, int minimumHeight);
