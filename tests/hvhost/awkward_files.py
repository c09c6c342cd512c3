"""Small files as other programs and people write them, and what each must give.

A row: content, options, types, records. The types are a letter for each field: integer, real, date, time,
stamp (a timestamp) or text (x). The records are the lines that convert writes, with the names first. If types is
None, the file is refused, and records is in the message. A file is FILES[name]; the name's extension counts.
"""
import gzip

FILES = {
    # Separators
    "comma.csv": ("a,b\n1,x\n2,y\n", "", "ix", "a,b\n1,x\n2,y\n"),
    "semicolon.csv": ("a;b\n1;x\n2;y\n", "", "ix", "a,b\n1,x\n2,y\n"),
    "tab.tsv": ("a\tb\n1\tx, y\n2\ty\n", "", "ix", 'a,b\n1,"x, y"\n2,y\n'),
    "bar.txt": ("a|b\n1|x\n2|y\n", "", "ix", "a,b\n1,x\n2,y\n"),
    "decimal_comma.csv": ("a;b\n1,5;x\n2,5;y\n", "--decimal-comma", "rx", "a,b\n1.5,x\n2.5,y\n"),
    "comma_in_names.csv": ("price, net;n\n1;2\n3;4\n", "", "ii", '"price, net",n\n1,2\n3,4\n'),
    "commas_in_quotes.csv": ('a;b\n"1,2,3";x\n"4,5";y\n', "", "xx", 'a,b\n"1,2,3",x\n"4,5",y\n'),
    "one_column.csv": ("a\n1\n2\n", "", "i", "a\n1\n2\n"),
    "one_column_of_text.csv": ("title\nhello, you\nyou\n", "", None, "one_column_of_text.csv:2: the record has 2 fields, not 1"),
    # Line ends and marks
    "crlf.csv": ("a,b\r\n1,x\r\n2,y\r\n", "", "ix", "a,b\n1,x\n2,y\n"),
    "cr.csv": ("a,b\r1,x\r2,y\r", "", "ix", "a,b\n1,x\n2,y\n"),
    "mixed_ends.csv": ("a,b\r\n1,x\n2,y\n", "", None, "mixed_ends.csv:2: the line ends in LF, and the first one in CR LF"),
    "no_last_end.csv": ("a,b\n1,x", "", "ix", "a,b\n1,x\n"),
    "bom.csv": ("\ufeffa,b\n1,x\n", "", "ix", "a,b\n1,x\n"),
    "utf16.csv": ("a,b\n1,ä\n".encode("utf-16"), "", "ix", "a,b\n1,ä\n"),
    "latin1.csv": ("a,b\n1,ä\n".encode("latin-1"), "", None, "latin1.csv:2: the text is not UTF-8"),
    "latin1_named.csv": ("a,b\n1,ä\n".encode("latin-1"), "--encoding latin1", "ix", "a,b\n1,ä\n"),
    "packed.csv.gz": (gzip.compress(b"a,b\n1,x\n"), "", "ix", "a,b\n1,x\n"),
    # Above the records
    "no_header.csv": ("1,x\n2,y\n", "--no-header", "ix", "field1,field2\n1,x\n2,y\n"),
    "blank_above.csv": ("\n\na,b\n1,x\n", "", "ix", "a,b\n1,x\n"),
    "blank_above_dates.csv": ("\n\na,b\n31.01.2024,x\n", "", "dx", "a,b\n2024-01-31,x\n"),
    "comments_above.csv": ("# office\n# of, two, commas\na,b\n1,x\n2,y\n", "", "ix", "a,b\n1,x\n2,y\n"),
    "comments_inside.csv": ("a,b\n1,x\n# later\n2,y\n", "", "ix", "a,b\n1,x\n2,y\n"),
    "hash_in_name.csv": ("#,b\n1,x\n2,y\n", "", "ix", '"#",b\n1,x\n2,y\n'),
    "title.csv": ("Report of 2024\n\na,b\n1,x\n2,y\n", "", "ix", "a,b\n1,x\n2,y\n"),
    "title_near.csv": ("Report of 2024\na,b\n1,x\n2,y\n", "", "ix", "a,b\n1,x\n2,y\n"),
    "title_skipped.csv": ("A, B and C\na,b\n1,x\n", "--skip 1", "ix", "a,b\n1,x\n"),
    "short_first_line.csv": ("a\n1,x\n2,y\n", "", None, "short_first_line.csv:2: the record has 2 fields, not 1"),
    "numbers_only.csv": ("1,2\n3,4\n", "", "ii", "field1,field2\n1,2\n3,4\n"),
    "numbers_as_names.csv": ("1,2\n3,4\n", "--header", "ii", "1,2\n3,4\n"),
    "numbered.csv": (",0,1,2\n0,5.5,x,3\n1,6,y,4\n", "", "irxi", "field1,0,1,2\n0,5.5,x,3\n1,6.0,y,4\n"),
    "dates_first.csv": ("2024-01-31;x\n2024-02-01;y\n", "", "dx", "field1,field2\n2024-01-31,x\n2024-02-01,y\n"),
    "words_only.csv": ("yes,no\nno,no\nyes,yes\n", "", "xx", "yes,no\nno,no\nyes,yes\n"),
    "years.csv": ("land,2019,2020\nx,5,6\ny,7,8\n", "", "xii", "land,2019,2020\nx,5,6\ny,7,8\n"),
    "names_twice.csv": ("a,,a\n1,2,3\n", "", "iii", "a,field2,a_1\n1,2,3\n"),
    # Records
    "short_record.csv": ("a,b\n1,x\n2\n", "", None, "short_record.csv:3: the record has 1 field, not 2"),
    "long_record.csv": ("a,b\n1,x\n2,y,z\n", "", None, "long_record.csv:3: the record has 3 fields, not 2"),
    "separator_at_end.csv": ("a,b,\n1,x,\n2,y,\n", "", "ixx", "a,b,field3\n1,x,\n2,y,\n"),
    "blank_lines.csv": ("a,b\n1,x\n\n2,y\n\n", "", "ix", "a,b\n1,x\n2,y\n"),
    "only_names.csv": ("a,b\n", "", "xx", "a,b\n"),
    "empty.csv": ("", "", None, "the file is empty"),
    # Quotes
    "quotes.csv": ('a,b\n"x, y","say ""hi"""\n', "", "xx", 'a,b\n"x, y","say ""hi"""\n'),
    "line_in_quotes.csv": ('a,b\n"x\ny",1\n', "", "xi", 'a,b\n"x\ny",1\n'),
    "blanks_around_quotes.csv": ('a,b\n1, "x" \n', "", "ix", "a,b\n1,x\n"),
    "quote_inside.csv": ('a,b\n5" disk,1\n', "", "xi", 'a,b\n"5"" disk",1\n'),
    "single_quotes.csv": ("a,b\n'x, y',1\n'it''s',2\n", "", "xi", "a,b\n\"x, y\",1\nit's,2\n"),
    "apostrophes.csv": ("name,n\nO'Brien,1\nD'Arcy,2\n", "", "xi", "name,n\nO'Brien,1\nD'Arcy,2\n"),
    "backslashes.csv": ('a,b\n"say \\"hi\\"",1\n"x, y",2\n', "", "xi", 'a,b\n"say ""hi""",1\n"x, y",2\n'),
    "paths.csv": ("a,b\nC:\\temp\\,1\n", "", "xi", "a,b\nC:\\temp\\,1\n"),
    "open_quote.csv": ('a,b\n"x,1\ny,2\n', "", None, "open_quote.csv:2:1: a quote is not closed"),
    "text_after_quote.csv": ('a,b\n"x"y,1\n', "", None, "text_after_quote.csv:2:4: text follows a closing quote"),
    # Numbers
    "codes.csv": ("plz,n\n01067,1\n80331,2\n", "", "xi", "plz,n\n01067,1\n80331,2\n"),
    "reals.csv": ("x\n1.5\n-2e3\n.5\n", "", "r", "x\n1.5\n-2000.0\n0.5\n"),
    "long_numbers.csv": ("x\n9223372036854775807\n1\n", "", "i", "x\n9223372036854775807\n1\n"),
    "thousands.csv": ("x\n\"1,234.5\"\n\"2,000\"\n", "--thousands , --separator ;", "r", "x\n1234.5\n2000.0\n"),
    "missing.csv": ("x,y\nNA,a\n2,N/A\n", "--missing NA,N/A", "ix", "x,y\n,a\n2,\n"),
    "missing_unnamed.csv": ("x\n1\nNA\n2\n", "", "x", "x\n1\nNA\n2\n"),
    "percent.csv": ("x\n12 %\n3.5%\n", "--type x=real", "r", "x\n12.0\n3.5\n"),
    "currency.csv": ("x;y\n€ 5;$1,200\n7 €;$3\n", "--type x=integer --type y=real --thousands ,", "ir", "x,y\n5,1200.0\n7,3.0\n"),
    "booleans.csv": ("x,y\nTRUE,1\nFalse,2\n", "", "xi", "x,y\nTRUE,1\nFalse,2\n"),
    "booleans_as_numbers.csv": ("x,y\nTRUE,1\nFalse,2\n", "--type x=integer", "ii", "x,y\n1,1\n0,2\n"),
    "booleans_named.csv": ("x,y\nTRUE,1\nNo,2\n", "--type x=boolean", "ii", "x,y\n1,1\n0,2\n"),
    "not_a_boolean.csv": ("x\nyes\nmaybe\n", "--type x=boolean", None, 'record 2: field "x": "maybe" is not one of true'),
    "not_a_number.csv": ("x\n12 %\nmany\n", "--type x=real", None, 'not_a_number.csv: record 2: field "x": "many" is not Real'),
    # Dates and times
    "iso.csv": ("d,t,s\n2024-01-31,07:08,2024-01-31 07:08:09\n", "", "dts", "d,t,s\n2024-01-31,07:08:00,2024-01-31 07:08:09\n"),
    "dotted.csv": ("d;n\n31.01.2024;1\n1.2.2024;2\n", "", "di", "d,n\n2024-01-31,1\n2024-02-01,2\n"),
    "dotted_times.csv": ("d\n31.01.2024 07:08\n01.02.2024 8:09\n", "", "s", "d\n2024-01-31 07:08:00\n2024-02-01 08:09:00\n"),
    "month_first.csv": ("d\n1/31/2024\n2/3/2024\n", "", "d", "d\n2024-01-31\n2024-02-03\n"),
    "day_or_month.csv": ("d\n01/02/2024\n03/04/2024\n", "", "d", "d\n2024-02-01\n2024-04-03\n"),
    "two_forms.csv": ("d,e\n2024-01-31,31/01/2024\n2024-02-01,01/02/2024\n", "", "dd", "d,e\n2024-01-31,2024-01-31\n2024-02-01,2024-02-01\n"),
    "short_years.csv": ("d\n13/2/24\n12/3/24\n", "--missing NA", "x", "d\n13/2/24\n12/3/24\n"),
    "short_years_named.csv": ("d\n13/2/24\n12/3/24\n", "--date-format %d/%m/%y", "d", "d\n2024-02-13\n2024-03-12\n"),
    "no_such_day.csv": ("d\n31.02.2024\n01.03.2024\n", "", "x", "d\n31.02.2024\n01.03.2024\n"),
    "zones.csv": ("s\n2024-05-06T07:08:09+02:00\n2024-05-06T07:08:09Z\n", "", "s", "s\n2024-05-06 05:08:09\n2024-05-06 07:08:09\n"),
}

# What is said about a file that is read. Nothing is said about the others.
WARNINGS = {
    "title.csv": "the first line is ignored as a title; --skip N",
    "title_near.csv": "the first line is ignored as a title; --skip N",
    "numbers_only.csv": 'the first record is read as data, not as names: "1" is a value, like those below it; --header',
    "numbered.csv": 'the first record may not be names: "0" is a value',
    "dates_first.csv": 'the first record is read as data, not as names: "2024-01-31" is a value',
    "words_only.csv": 'the first record may not be names: "yes" is also a value below it',
    "day_or_month.csv": "d: dates were read with the day first, and the month could be first; --date-format",
    "short_years.csv": "d: dates with years of two digits were read as texts; --date-format",
}
