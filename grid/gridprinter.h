#pragma once

class GridControl;
class QPaintDevice;

/// Draws all cells of \a grid, black on white in Arial.
///
/// With \a toOnePage columns and rows are shrunk, never enlarged, each as far as needed to fit one
/// page. Without it a device with pages gets the columns at the full width of the page, rows in the
/// same measure, and further pages with the header repeated; a device without pages gets both
/// stretched to its size. \a gridLines draws the cells' borders. False for an empty grid and for a
/// device that can't be painted on.
bool printGrid(const GridControl &grid, QPaintDevice &device, bool toOnePage, bool gridLines);
