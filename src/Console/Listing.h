#pragma once

#include "Device/Section.h"

struct SectionItems;

/// The table of a section's items that "list" prints.
namespace Listing
{
void print(Section section, const SectionItems& items);
} // namespace Listing
