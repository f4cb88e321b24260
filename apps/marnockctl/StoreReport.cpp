#include "apps/marnockctl/StoreReport.h"

#include "apps/json/ByteText.h"
#include "apps/marnockctl/TextTable.h"
#include "platform/text/PlenixBase.h"

namespace KT {

namespace {

const char* NameOfCondition(const StoreLook& look) {
  if (look.unreadable.has_value()) {
    return "unreadable";
  }
  if (look.isBeingSaved) {
    return "being saved";
  }
  switch (look.plan.condition) {
    case Condition::Absent:
      return "absent";
    case Condition::Whole:
      return "whole";
    case Condition::Repairable:
      return "repairable";
    case Condition::Lost:
      return "lost";
  }
  return "";
}

const char* NameOf(JournalKind kind) {
  switch (kind) {
    case JournalKind::None:
      return "none";
    case JournalKind::Fresh:
      return "fresh";
    case JournalKind::Other:
      return "other";
  }
  return "";
}

const char* ExplanationOf(JournalKind kind) {
  return kind == JournalKind::Fresh ? "of a save that began with an empty file; it must not be applied"
                                    : "of a change that was not finished, or of another program";
}

std::string PathOf(const StoreLook& look) { return PlenixBase::UnicodeToUTF8(look.finding.path); }

// Lines of a name and what there is to say under it; only the first of several lines has the name.
class Lines {
 public:
  void Add(const std::string& name, const std::string& text) {
    names_.push_back(name);
    texts_.push_back(text);
  }

  void Add(const std::string& name, const std::vector<std::string>& texts) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
      Add(i == 0 ? name : "", texts[i]);
    }
  }

  std::string Text() const {
    TextTable table;
    table.AddColumn(names_);
    table.AddColumn(texts_);
    return table.Text();
  }

 private:
  std::vector<std::string> names_;
  std::vector<std::string> texts_;
};

void AddDatabase(Lines& lines, const FoundDatabase& found) {
  lines.Add("integrity", ToTerminalText(found.judgement.integrity));
  lines.Add("schema", found.judgement.schema.empty() ? "not looked at" : ToTerminalText(found.judgement.schema));
  if (found.IsWhole()) {
    lines.Add("rows", std::to_string(found.judgement.rows));
  }
}

std::string OlderCopyText(const FoundDatabase& copy) {
  return copy.IsWhole() ? "whole, rows: " + std::to_string(copy.judgement.rows)
                        : "not whole: " + ToTerminalText(copy.judgement.Problem());
}

// None while somebody else is at work.
std::vector<std::string> StepsOf(const StoreLook& look) {
  std::vector<std::string> steps;
  if (look.isBeingSaved) {
    return steps;
  }
  for (const RepairStep step : look.plan.steps) {
    steps.push_back(ToDo(step, look.finding.path));
  }
  return steps;
}

std::string TextOf(const StoreLook& look) {
  Lines lines;
  lines.Add("table", look.finding.file->name);
  lines.Add("file", PathOf(look));
  if (look.unreadable.has_value()) {
    lines.Add("state", "unreadable: " + *look.unreadable);
  } else {
    lines.Add("state", CaseOf(look.plan));
    lines.Add("condition", NameOfCondition(look));
    if (look.finding.database.isThere) {
      AddDatabase(lines, look.finding.database);
    }
    if (look.finding.journal != JournalKind::None) {
      lines.Add("journal", ExplanationOf(look.finding.journal));
    }
    if (look.finding.temporary.isThere) {
      lines.Add("older copy", OlderCopyText(look.finding.temporary));
    }
    lines.Add("to do", StepsOf(look));
  }
  std::vector<std::string> setAside;
  for (const std::string& name : look.setAside) {
    setAside.push_back(ToTerminalText(name));
  }
  lines.Add("set aside", setAside);
  return lines.Text();
}

Json JsonOf(const FoundDatabase& found) {
  if (!found.isThere) {
    return nullptr;
  }
  return Json{{"bytes", found.bytes},
              {"integrity", ToJson(found.judgement.integrity)},
              {"schema", found.judgement.schema.empty() ? Json() : ToJson(found.judgement.schema)},
              {"rows", found.IsWhole() ? Json(found.judgement.rows) : Json()}};
}

Json JsonOf(const StoreLook& look) {
  Json object{{"table", look.finding.file->name}, {"path", ToJson(PathOf(look))}, {"condition", NameOfCondition(look)}};
  if (look.unreadable.has_value()) {
    object["state"] = ToJson(*look.unreadable);
  } else {
    object["state"] = CaseOf(look.plan);
    object["rule"] = look.plan.rule;
    object["database"] = JsonOf(look.finding.database);
    object["journal"] = NameOf(look.finding.journal);
    object["temporary"] = JsonOf(look.finding.temporary);
    object["steps"] = StepsOf(look);
  }
  object["setAside"] = look.setAside;
  return object;
}

}  // namespace

std::string StoreText(const std::vector<StoreLook>& looks) {
  std::string text;
  for (const StoreLook& look : looks) {
    text += (text.empty() ? "" : "\n\n") + TextOf(look);
  }
  return text;
}

Json StoreJson(const std::vector<StoreLook>& looks) {
  Json files = Json::array();
  for (const StoreLook& look : looks) {
    files.push_back(JsonOf(look));
  }
  return files;
}

}  // namespace KT
