#pragma once
#include <QIcon>
#include <QPixmap>

// An image file of the setup's image folder ("OK-16.png"...), through
// ZoVelmoraSetup::getImageFilePath; a missing file falls back to a Qt standard icon.
QIcon ZoImageIcon(wchar_t const* fileName);
QPixmap ZoImagePixmap(wchar_t const* fileName);
// A bitmap resource of the module by its number (2402, 2403...), drawn by us; magenta
// (0xFF00FF) is transparent. A number without an image gives a null icon.
QIcon ZoBitmapIcon(int resourceId);
QPixmap ZoBitmapPixmap(int resourceId);
// Greyed form of a pixmap (disabled events).
QPixmap ZoGrayed(QPixmap const& pixmap);

// Strips: images of `size` pixels side by side; ZoStripPixmap cuts image `index` out of one
// (null when the index is outside the strip).
QPixmap ZoStripPixmap(QPixmap const& strip, int index, int size = 16);
QIcon ZoBitmapStripIcon(int resourceId, int index, int size = 16);

// The event editor's time-table drop-down draws each entry with the icon of its kind, taken
// from one strip of four 16x16 images (":/images/bmp-timetable-kinds.png"):
//   0 no time table, 1 day program, 2 week program, 3 calendar.
// Any other kind gives a null pixmap.
QPixmap ZoTimeTableKindPixmap(int kind);

// Images of the module (":/images"), for reference:
//   image files, by name (the host's image folder may hold its own copies):
//     OK-16, CANCEL-16, NEW-16, MODIFY-16, REMOVE-16     button images
//     SYSTEM-event_16, SYSTEM-event_16_grayed            event rows (enabled, disabled)
//     MAIL-48, LAUNCH-WEB-48                             action wizard links
//     PROGRAM-16, PROGRAM-32, PROGRAM-48                 the program's icon
//     WIZARD-16 (formula and annotation wizards), SEARCH-16 (choosers),
//     COPY-16, PASTE-16 (context menus),
//     TIMETABLE-DAY-16, TIMETABLE-WEEK-16, TIMETABLE-CALENDAR-16 (the three kinds, single)
//   bitmap resources, by number (":/images/bmp-NNNN.png"):
//     2402 2403 2404  add, modify, delete event        2405 2406 2407  add, modify, delete group
//     2408 group row  2416 event row                   2417 2419  add, remove group member
//     2426  strip of three 16x16 kinds: day program, week program, calendar
//     2439 2440 2441  48x48 day, week, calendar (time-table wizard links)
//     2442 force  2443 command  2445 screen  2446 report  2447 device  2448 beep
//     1409 SMS    (48x48, action wizard links)
// They are drawn by tools/make-images (run tools/make-images.sh after a change).
