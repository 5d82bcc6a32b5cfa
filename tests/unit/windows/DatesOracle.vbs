' Date arithmetic as a script engine of the run-time does it, for the tests to compare with.
' Lines: "<unit> <count> <days since 30 December 1899> <second of the day> <year> <month> <day> <hour> <minute> <second>".
' Years, quarters and months start on the 28th at most: this engine carries a day that the month lacks into the next
' month, where the documented one takes the month's last day. For the same reason it is not asked about longer times.
Option Explicit
Dim units, most, unit, u, i, days, seconds, count, start, sum
units = Array("yyyy", "q", "m", "n", "s")
most = Array(100, 2000, 2000, 2000, 2000)
For u = 0 To UBound(units)
  unit = units(u)
  For i = 1 To 300
    days = (i * 7919) Mod 140000 - 50000
    seconds = (i * 6151) Mod 86400
    count = (i * 4447) Mod (2 * most(u) + 1) - most(u)
    If days < 0 Then start = CDate(days - seconds / 86400) Else start = CDate(days + seconds / 86400)
    If Day(start) <= 28 Or InStr("ns", unit) > 0 Then
      sum = DateAdd(unit, count, start)
      WScript.Echo unit & " " & count & " " & days & " " & seconds & " " & Year(sum) & " " & Month(sum) & " " & _
        Day(sum) & " " & Hour(sum) & " " & Minute(sum) & " " & Second(sum)
    End If
  Next
Next
