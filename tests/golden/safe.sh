# Outputs that are whole or not there, and names that no terminal, picture or spreadsheet takes for something else.
exec 2>&1
cp odd/pdb_plain.pdb mine.pdb
loopwise survey --method outside --svg a.svg --each ./a.svg mine.pdb
loopwise survey --method outside --svg "$PWD/a.svg" --html a.svg mine.pdb
ls a.svg
echo old >each.csv
timeout --foreground -s INT 0.3 loopwise survey --each each.csv --method two-points --count 90000000 mine.pdb >/dev/null
head -2 each.csv && ls ./*each*
loopwise survey --method outside --each each.csv mine.pdb >/dev/null && head -2 each.csv && ls ./*each*
# A name with commands to a terminal, in UTF-8 (C1) and with a line end.
odd=$(printf 'a\033[2J\302\233b\nc\177.pdb')
sed "s/ALA A/ALA$(printf '\033')A/" mine.pdb >"$odd"
loopwise survey --method outside "$odd" mine.pdb | cat -v | grep beads,
loopwise survey --method outside --csv "$odd" | cat -v | sed -n '2,3p' | cut -c1-20
loopwise survey "$odd.none" 2>&1 >/dev/null | cat -v
loopwise check "$odd" | cat -v
name=$(printf 'b\377\355\240\200.pdb') && cp mine.pdb "$name"
loopwise survey --method outside --svg b.svg "$name" >/dev/null && iconv -f utf8 -t utf8 b.svg | grep -c svg
# Formulas. Numbers and names of knots stay.
for name in =1+1 +1+1 -2+3 @SUM '-1_|a' "-3_1.pdb" "+sum" "-5" ; do cp mine.pdb "./$name"; done
loopwise survey --method outside --csv -- =1+1 +1+1 -2+3 @SUM '-1_|a' -3_1.pdb +sum -5 | cut -d, -f1,13,21
