/// A page of docs/, as its text.
declare module "*.md" {
  const text: string;
  export default text;
}
