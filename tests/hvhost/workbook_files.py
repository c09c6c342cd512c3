"""Small xlsx workbooks."""
import io
import zipfile

MAIN = 'xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"'
OFFICE = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
RELATIONS = '<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">{}</Relationships>'


def relation(number, kind, target):
    return f'<Relationship Id="r{number}" Type="{OFFICE}/{kind}" Target="{target}"/>'


def cell(column, row, value):
    """A value, or the attributes and the content of a cell."""
    if isinstance(value, tuple):
        return f'<c r="{chr(65 + column)}{row}" {value[0]}>{value[1]}</c>'
    if isinstance(value, str):
        return cell(column, row, ('t="inlineStr"', f"<is><t>{value}</t></is>"))
    return "" if value is None else cell(column, row, ("", f"<v>{value}</v>"))


def sheet(rows):
    data = "".join(f'<row r="{row}">' + "".join(cell(column, row, value) for column, value in enumerate(values)) +
                   "</row>" for row, values in enumerate(rows, 1))
    return f"<worksheet {MAIN}><sheetData>{data}</sheetData></worksheet>"


def workbook(*sheets, codes=(), texts=(), properties="", **parts):
    """The sheets as lists of rows. Style n of a cell has the n-th number or code of a format, from 1."""
    count = len(sheets)
    names = "".join(f'<sheet name="Sheet {i}" sheetId="{i}" r:id="r{i}"/>' for i in range(1, count + 1))
    own = "".join(f'<numFmt numFmtId="{200 + i}" formatCode="{code}"/>' for i, code in enumerate(codes))
    used = "".join(f'<xf numFmtId="{code if isinstance(code, int) else 200 + i}"/>' for i, code in enumerate(codes))
    files = {
        "_rels/.rels": RELATIONS.format(relation(1, "officeDocument", "xl/workbook.xml")),
        "xl/workbook.xml": f'<workbook {MAIN} xmlns:r="{OFFICE}"><workbookPr {properties}/><sheets>{names}</sheets>'
                           "</workbook>",
        "xl/_rels/workbook.xml.rels": RELATIONS.format(
            "".join(relation(i, "worksheet", f"sheets/{i}.xml") for i in range(1, count + 1)) +
            relation(98, "styles", "styles.xml") + relation(99, "sharedStrings", "/xl/texts.xml")),
        "xl/styles.xml": f'<styleSheet {MAIN}><numFmts>{own}</numFmts><cellXfs><xf numFmtId="0"/>{used}</cellXfs>'
                         "</styleSheet>",
        "xl/texts.xml": f"<sst {MAIN}>" + "".join(f"<si>{text}</si>" for text in texts) + "</sst>",
    }
    files.update({f"xl/sheets/{i}.xml": sheet(rows) for i, rows in enumerate(sheets, 1)})
    files.update(parts)
    content = io.BytesIO()
    with zipfile.ZipFile(content, "w", zipfile.ZIP_DEFLATED) as archive:
        for name, text in files.items():
            archive.writestr(name, text)
    return content.getvalue()
