// The chapters of the tour, in their order; each leaves the panel connected as the
// next one wants it.
#pragma once

class TTour;

// Start, failing and succeeding logon, the lists, logoff, a second start.
void TourConnect(TTour& tour);
// Branches, numbers, types, requirements, tabs, baselines, views.
void TourBrowse(TTour& tour);
// Status, save, cancel, a refused lock, creation, moves, deletion, find.
void TourEdit(TTour& tour);
// Typing, formats, save and cancel of a description, a key reference.
void TourDescribe(TTour& tour);
// Every kind of attribute on custom tabs: saved, cancelled, refused.
void TourAttributes(TTour& tour);
// Puts a table and a picture into a description and points at a term.
void TourExplain(TTour& tour);
