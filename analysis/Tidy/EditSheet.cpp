#include "analysis/Tidy/EditSheet.h"

#include <algorithm>
#include <utility>

#include "DOM/A1Notation.h"

namespace Zorv::Analysis {

namespace {

/// Bytes that take the place of others.
struct Replacement {
  Span span;
  std::string bytes;
};

std::string_view bytesOf(std::string_view bytes, Span span) noexcept {
  return bytes.substr(span.begin, span.end - span.begin);
}

std::string escape(std::string_view text) {
  std::string escaped;
  for (char const c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

/// The bytes of a span with replacements inside it, which ascend.
std::string replaceIn(std::string_view bytes, Span span, std::vector<Replacement> const& changes) {
  std::string result;
  std::size_t copied = span.begin;
  for (Replacement const& change : changes) {
    result += bytes.substr(copied, change.span.begin - copied);
    result += change.bytes;
    copied = change.span.end;
  }
  result += bytes.substr(copied, span.end - copied);
  return result;
}

/// Editor of one `conditionalFormatting` element.
class FormatEditor {
public:
  FormatEditor(std::string_view bytes, FormatMarkup const& format, RuleEdits const& edits)
      : _bytes(bytes), _format(format) {
    for (RuleMarkup const& rule : format.rules) {
      auto const found = edits.find(rule.index);
      RuleEdit const* const edit = found == edits.end() ? nullptr : &found->second;
      _isEdited = _isEdited || edit != nullptr;
      if (edit != nullptr && edit->isDropped) {
        _dropped.push_back(&rule);
      } else {
        _kept.push_back({&rule, edit, writeRanges(edit)});
      }
    }
  }

  void addTo(std::vector<Replacement>& changes) const {
    if (!_isEdited) {
      return;
    }
    if (_kept.empty()) {
      changes.push_back({_format.span, {}});
    } else if (std::ranges::all_of(
                   _kept, [&](Kept const& kept) { return kept.ranges == _kept.front().ranges; })) {
      addInPlace(changes);
    } else {
      changes.push_back({_format.span, writeRuns()});
    }
  }

private:
  struct Kept {
    RuleMarkup const* rule;
    RuleEdit const* edit;  ///< null for none
    std::string ranges;    ///< as they are to be written
  };

  [[nodiscard]] std::string writeRanges(RuleEdit const* edit) const {
    return edit != nullptr && edit->ranges ? DOM::A1Notation::toAddress(*edit->ranges)
                                           : std::string(bytesOf(_bytes, _format.ranges));
  }

  /// The rules keep one element: only what changes in it is replaced.
  void addInPlace(std::vector<Replacement>& changes) const {
    std::vector<Replacement> own{{_format.ranges, _kept.front().ranges}};
    for (RuleMarkup const* rule : _dropped) {
      own.push_back({rule->span, {}});
    }
    for (Kept const& kept : _kept) {
      addFormulas(kept, own);
    }
    std::ranges::sort(own, {}, [](Replacement const& change) { return change.span.begin; });
    changes.insert(changes.end(), own.begin(), own.end());
  }

  static void addFormulas(Kept const& kept, std::vector<Replacement>& changes) {
    if (kept.edit == nullptr) {
      return;
    }
    for (std::size_t at = 0; at < kept.edit->formulas.size(); ++at) {
      if (auto const& content = kept.rule->formulas[at].content) {
        changes.push_back({*content, escape(kept.edit->formulas[at])});
      }
    }
  }

  /// One element for each run of rules with the same ranges.
  [[nodiscard]] std::string writeRuns() const {
    std::string text;
    for (std::size_t at = 0; at < _kept.size(); ++at) {
      std::string const& ranges = _kept[at].ranges;
      if (at == 0 || _kept[at - 1].ranges != ranges) {
        text += writeStart(ranges);
      }
      std::vector<Replacement> changes;
      addFormulas(_kept[at], changes);
      text += replaceIn(_bytes, _kept[at].rule->span, changes);
      if (at + 1 == _kept.size() || _kept[at + 1].ranges != ranges) {
        text += writeEnd(ranges);
      }
    }
    return text;
  }

  [[nodiscard]] std::string writeStart(std::string const& ranges) const {
    return _format.isExtension ? std::string(bytesOf(_bytes, _format.startTag))
                               : replaceIn(_bytes, _format.startTag, {{_format.ranges, ranges}});
  }

  [[nodiscard]] std::string writeEnd(std::string const& ranges) const {
    std::string text;
    if (_format.isExtension) {
      text = replaceIn(_bytes, _format.rangesElement, {{_format.ranges, ranges}});
    }
    text += bytesOf(_bytes, _format.endTag);
    return text;
  }

  std::string_view _bytes;
  FormatMarkup const& _format;
  std::vector<Kept> _kept;
  std::vector<RuleMarkup const*> _dropped;
  bool _isEdited = false;
};

}  // namespace

std::string editSheet(std::string_view bytes, std::vector<FormatMarkup> const& formats,
                      RuleEdits const& edits) {
  std::vector<Replacement> changes;
  for (FormatMarkup const& format : formats) {
    FormatEditor(bytes, format, edits).addTo(changes);
  }
  return replaceIn(bytes, {0, bytes.size()}, changes);
}

}  // namespace Zorv::Analysis
