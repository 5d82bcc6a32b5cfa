' The scrambler as a script engine of the run-time computes it, random numbers and all, for the tests to compare with.
' Lines: <character codes> <scrambled text>.
Option Explicit
Dim n, i, text, codes, seed
Const KEY = "7Q%-k#"

Function Scramble(ByVal s)
  Dim prev, cur, v, digits, out, pos, digit
  If Len(s) < Len(KEY) Then s = s & Right(KEY, Len(KEY) - Len(s))
  If Len(s) > 12 Then s = Left(s, 12)
  prev = Asc(Left(s, 1))
  Dim k
  For k = 2 To Len(s)
    cur = Asc(Mid(s, k, 1))
    v = (CLng(prev) * CLng(prev)) Xor (cur * 103)
    digits = Oct(v)
    If Len(digits) >= 3 Then
      digits = Mid(digits, 2)
      digits = Right(digits, 1) & Left(digits, Len(digits) - 1)
    End If
    out = out & digits
    prev = cur
  Next
  Rnd -CSng(Left(out, 6))
  Do
    pos = CLng(Rnd() * Len(out) + 1)
    If Rnd() >= 0.5 Then digit = "8" Else digit = "9"
    out = Left(out, pos - 1) & digit & Mid(out, pos)
  Loop While Rnd() < 0.7
  Scramble = out
End Function

' Texts of 0 to 14 characters over the whole single-byte code page, from a generator of their own.
seed = 12345
For n = 0 To 1499
  text = ""
  codes = "-"
  For i = 1 To n Mod 15
    seed = (seed * 1103 + 12289) Mod 65521
    text = text & Chr(32 + seed Mod 224)
    codes = codes & Asc(Right(text, 1)) & "-"
  Next
  WScript.Echo codes & " " & Scramble(text)
Next
