#include "figures/resource_figures.h"

#include "profile/scan/tab_fields.h"

namespace ptick {

std::array<std::string_view, kResourceFigures> ResourceFigures(std::string_view resource) {
  std::array<std::string_view, kResourceFigures> figures;
  TabFields fields(resource);
  for (std::string_view& figure : figures) {
    figure = fields.Next();
  }
  return figures;
}

}  // namespace ptick
