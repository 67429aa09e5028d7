#pragma once

#include "images/ImageLibrary.h"

#include <QImage>
#include <QSize>
#include <QString>
#include <QStringList>

namespace tarvex {

/// A picture file as the picture list reads it: what was found at the path, the picture's
/// own size (upright, as a camera's orientation mark turns it), and the picture itself,
/// no larger than it was asked for.
struct PictureRead
{
    PictureFound found = PictureFound::Missing;
    QSize size;
    QImage image;
};

/// The breeder's picture files, read through the image formats this system has. A
/// photograph is decoded straight to the size it is shown at where its format allows (a
/// JPEG decodes at an eighth, a quarter or half of its size), so a camera's 24 megapixels
/// are never held whole for a slot on the screen.
namespace PictureReader {

/// What is at the path, from the file's heading alone: gone (or no file), not a picture
/// this system reads, or a picture and its size.
PictureRead probe(const QString &path);

/// The picture, scaled down to fit within box in proportion (never enlarged). A file whose
/// heading reads but whose picture does not (cut short, damaged) is not a picture.
PictureRead read(const QString &path, const QSize &box);

/// The file name patterns of the pictures that can be read here (JPEG, PNG, BMP and GIF,
/// WebP where its plug-in is installed), in both cases of letters, as cameras write them.
QStringList patterns();
/// The chooser's filter: "Images (*.jpg *.jpeg ...)".
QString fileFilter();

} // namespace PictureReader
} // namespace tarvex
