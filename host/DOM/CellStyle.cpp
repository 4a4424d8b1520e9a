#include "DOM/CellStyle.h"

#include <boost/container_hash/hash.hpp>

namespace Zorv::DOM {

namespace {

/// Merged group of target and source. A target that sets nothing shares the source's group, which
/// is safe because groups are immutable.
template <class Props>
std::shared_ptr<Props const> overridden(std::shared_ptr<Props const> const& target,
                                        std::shared_ptr<Props const> const& source) {
  if (!source || target == source) {
    return target;
  }
  if (!target) {
    return source;
  }
  auto merged = std::make_shared<Props>(*target);
  override(*merged, *source);
  return merged;
}

template <class Props>
bool areEqual(std::shared_ptr<Props const> const& a,
              std::shared_ptr<Props const> const& b) noexcept {
  return a == b || (a && b && *a == *b);
}

template <class Props>
void combine(std::size_t& seed, std::shared_ptr<Props const> const& props) noexcept {
  boost::hash_combine(seed, props != nullptr);
  if (props) {
    boost::hash_combine(seed, *props);
  }
}

}  // namespace

void override(CellStyle& target, CellStyle const& source) {
  // Everything that can throw comes first, so that a failure leaves the target unchanged.
  auto runProps = overridden(target.getRunProps(), source.getRunProps());
  auto paraProps = overridden(target.getParaProps(), source.getParaProps());
  auto cellProps = overridden(target.getCellProps(), source.getCellProps());
  target.setRunProps(std::move(runProps));
  target.setParaProps(std::move(paraProps));
  target.setCellProps(std::move(cellProps));
  if (source.getCellFormat()) {
    target.setCellFormat(source.getCellFormat());
  }
  if (!source.getParentUUID().isEmpty()) {
    target.setParentUUID(source.getParentUUID());
  }
  if (!source.getNoteUUID().isEmpty()) {
    target.setNoteUUID(source.getNoteUUID());
  }
}

bool operator==(CellStyle const& a, CellStyle const& b) noexcept {
  return a.getParentUUID() == b.getParentUUID() && a.getNoteUUID() == b.getNoteUUID() &&
         areEqual(a.getRunProps(), b.getRunProps()) &&
         areEqual(a.getParaProps(), b.getParaProps()) &&
         areEqual(a.getCellProps(), b.getCellProps()) &&
         areEqual(a.getCellFormat(), b.getCellFormat());
}

std::size_t hash_value(CellStyle const& style) noexcept {
  std::size_t seed = hash_value(style.getParentUUID());
  boost::hash_combine(seed, style.getNoteUUID());
  combine(seed, style.getRunProps());
  combine(seed, style.getParaProps());
  combine(seed, style.getCellProps());
  combine(seed, style.getCellFormat());
  return seed;
}

}  // namespace Zorv::DOM
